#include "engine/dialect/LikePattern.h"
#include "engine/sqlite/Functions.h"

#include <QList>

#include <algorithm>
#include <array>

namespace velmora::engine::sqlite {

namespace {

// Lengths and places count UTF-16 units, as every text of the program does.
bool CutsCharacter(const QString& text, qint64 at) {
    return at > 0 && at < text.size() && text[at].isLowSurrogate() && text[at - 1].isHighSurrogate();
}

// The first `units` units; a character that would be cut in two is left out.
QString FirstOf(const QString& text, qint64 units) {
    return text.left(CutsCharacter(text, units) ? units - 1 : units);
}

qint64 Length(const Arguments& arguments, int index, const char* function) {
    const qint64 length = arguments.Integer(index);
    if (length < 0) {
        FailRange(QStringLiteral("%1 cannot take %2 characters.").arg(QLatin1String(function)).arg(length));
    }
    return length;
}

qint64 Start(const Arguments& arguments, int index, const char* function) {
    const qint64 start = arguments.Integer(index);
    if (start < 1) {
        FailRange(
            QStringLiteral("%1 cannot start at %2; the first character is 1.").arg(QLatin1String(function)).arg(start));
    }
    return start;
}

void Len(sqlite3_context* context, const Arguments& arguments) {
    Return(context, qint64{arguments.Text(0).size()});
}

void Left(sqlite3_context* context, const Arguments& arguments) {
    Return(context, FirstOf(arguments.Text(0), Length(arguments, 1, "Left")));
}

void Right(sqlite3_context* context, const Arguments& arguments) {
    const QString text = arguments.Text(0);
    const qint64 skipped = std::max<qint64>(0, text.size() - Length(arguments, 1, "Right"));
    Return(context, text.mid(CutsCharacter(text, skipped) ? skipped + 1 : skipped));
}

void Mid(sqlite3_context* context, const Arguments& arguments) {
    const QString whole = arguments.Text(0);
    const QString text = whole.mid(FirstOf(whole, Start(arguments, 1, "Mid") - 1).size());
    Return(context, arguments.Count() == 3 ? FirstOf(text, Length(arguments, 2, "Mid")) : text);
}

// Letter by letter: a text keeps its length.
template <char32_t (*convert)(char32_t)>
void ChangeCase(sqlite3_context* context, const Arguments& arguments) {
    QList<uint> letters = arguments.Text(0).toUcs4();
    std::transform(letters.begin(), letters.end(), letters.begin(), convert);
    Return(context, QString::fromUcs4(reinterpret_cast<const char32_t*>(letters.constData()), letters.size()));
}

char32_t Upper(char32_t letter) {
    return QChar::toUpper(letter);
}
char32_t Lower(char32_t letter) {
    return QChar::toLower(letter);
}

QString TextOrNumber(const Arguments& arguments, int index) {
    return arguments.Kind(index) == SQLITE_FLOAT ? NumberText(arguments.Real(index)) : arguments.Text(index);
}

// InStr([start,] text, searched [, compare]); with three arguments a number in the first place is the start.
void InStr(sqlite3_context* context, const Arguments& arguments) {
    const int count = arguments.Count();
    const bool hasStart = count == 4 || (count == 3 && arguments.IsNumber(0));
    const int first = hasStart ? 1 : 0;
    const qint64 start = hasStart ? Start(arguments, 0, "InStr") : 1;
    const bool exact = count > first + 2 && arguments.Integer(first + 2) == 0;
    const QString text = TextOrNumber(arguments, first);
    if (start > text.size()) {
        Return(context, qint64{0});
        return;
    }
    const qsizetype found = text.indexOf(TextOrNumber(arguments, first + 1), static_cast<qsizetype>(start - 1),
                                         exact ? Qt::CaseSensitive : Qt::CaseInsensitive);
    Return(context, qint64{found + 1});
}

// Orders as the store orders texts: by bytes, and unless exact with A to Z as a to z.
int CompareTexts(std::string_view first, std::string_view second, bool exact) {
    if (exact) {
        return first.compare(second);
    }
    const size_t common = std::min(first.size(), second.size());
    const int order = sqlite3_strnicmp(first.data(), second.data(), static_cast<int>(common));
    return order != 0 ? order : first.substr(common).compare(second.substr(common));
}

void StrComp(sqlite3_context* context, const Arguments& arguments) {
    const bool exact = arguments.Count() == 3 && arguments.Integer(2) == 0;
    const int order = CompareTexts(arguments.Utf8(0), arguments.Utf8(1), exact);
    Return(context, qint64{order < 0 ? -1 : order > 0 ? 1 : 0});
}

// The pattern of a statement is taken apart once, however many rows it meets.
void Like(sqlite3_context* context, const Arguments& arguments) {
    using dialect::LikePattern;
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
    if (pattern) {
        Return(context, qint64{pattern->Matches(arguments.Text(1))});
        return;
    }
    auto fresh = std::make_unique<LikePattern>(arguments.Text(0));
    Return(context, qint64{fresh->Matches(arguments.Text(1))});
    sqlite3_set_auxdata(context, 0, fresh.release(), [](void* kept) { delete static_cast<LikePattern*>(kept); });
}

constexpr std::array functions = std::to_array<ScalarFunction>({
    {"dialect_instr", -1, Scalar<InStr>},
    {"dialect_lcase", 1, Scalar<ChangeCase<Lower>>},
    {"dialect_left", 2, Scalar<Left>},
    {"dialect_len", 1, Scalar<Len>},
    {"dialect_like", 2, Scalar<Like>},
    {"dialect_mid", 2, Scalar<Mid>},
    {"dialect_mid", 3, Scalar<Mid>},
    {"dialect_right", 2, Scalar<Right>},
    {"dialect_strcomp", 2, Scalar<StrComp>},
    {"dialect_strcomp", 3, Scalar<StrComp>},
    {"dialect_ucase", 1, Scalar<ChangeCase<Upper>>},
});

} // namespace

std::span<const ScalarFunction> TextFunctions() {
    return functions;
}

} // namespace velmora::engine::sqlite
