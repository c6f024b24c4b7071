#include "engine/dialect/Lexer.h"

#include "engine/dialect/Literals.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

constexpr QStringView keywords[] = {
    u"all",   u"and",    u"as",     u"between", u"by",    u"delete", u"distinct", u"exists", u"false",
    u"from",  u"group",  u"having", u"in",      u"inner", u"insert", u"into",     u"is",     u"join",
    u"left",  u"like",   u"mod",    u"no",      u"not",   u"null",   u"on",       u"or",     u"order",
    u"right", u"select", u"set",    u"true",    u"union", u"update", u"values",   u"where",  u"yes"};

// Longer ones first.
constexpr QStringView marks[] = {u"<>", u"<=", u">=", u"<", u">", u"=", u",", u".",
                                 u"(",  u")",  u";",  u"*", u"/", u"+", u"-", u"&"};

class Lexer {
public:
    explicit Lexer(const SourceText& source) : source_(source), text_(source.text) {}

    TokenList Run() {
        while (at_ < text_.size()) {
            ReadToken();
        }
        Add(TokenKind::End, 0);
        return std::move(list_);
    }

private:
    [[noreturn]] void FailHere(const QString& what) const { Fail(EngineErrorNumber::Syntax, what, source_, at_); }

    void Add(TokenKind kind, qsizetype length) {
        list_.tokens.push_back({kind, at_, text_.mid(at_, length), -1});
        at_ += length;
    }

    void ReadToken() {
        if (LiteralStartsAt(text_, at_)) {
            ReadLiteral(ScanLiteral(text_, at_));
            return;
        }
        switch (ClassOf(text_[at_].unicode())) {
        case CharClass::Blank:
            ++at_;
            break;
        case CharClass::Word:
            ReadWord();
            break;
        case CharClass::Bracket:
            ReadBracketedName();
            break;
        case CharClass::Control:
            FailHere(QStringLiteral("A control character"));
        default:
            ReadMark();
        }
    }

    void ReadWord() {
        qsizetype end = at_ + 1;
        while (end < text_.size() && IsWordPart(text_[end].unicode())) {
            ++end;
        }
        const qsizetype length = end - at_;
        Add(IsKeyword(text_.mid(at_, length)) ? TokenKind::Keyword : TokenKind::Name, length);
    }

    void ReadBracketedName() {
        const qsizetype end = text_.indexOf(u']', at_);
        if (end < 0) {
            FailHere(QStringLiteral("The bracket has no closing bracket: it opens"));
        }
        const QStringView name = text_.mid(at_ + 1, end - at_ - 1);
        if (name.trimmed().isEmpty() || std::any_of(name.begin(), name.end(), [](QChar c) { return c < u' '; })) {
            FailHere(QStringLiteral("The brackets hold no name"));
        }
        list_.tokens.push_back({TokenKind::BracketedName, at_, name.trimmed(), -1});
        at_ = end + 1;
    }

    void ReadLiteral(ScannedLiteral literal) {
        const QStringView written = text_.mid(at_, literal.end - at_);
        switch (literal.fault) {
        case LiteralFault::None:
            break;
        case LiteralFault::Unterminated:
            FailHere(text_[at_] == u'#' ? QStringLiteral("The date has no closing \"#\": it begins")
                                        : QStringLiteral("The text has no closing quote: it begins"));
        case LiteralFault::BadNumber:
            FailHere(QStringLiteral("\"%1\" is no number").arg(text_.mid(at_, written.size() + 1)));
        case LiteralFault::BadDate:
            FailHere(QStringLiteral("%1 is no date (%2)").arg(written, literal.dateProblem));
        }
        list_.tokens.push_back({TokenKind::Literal, at_, written, static_cast<int>(list_.literals.size())});
        list_.literals.push_back(std::move(literal.value));
        at_ = literal.end;
    }

    void ReadMark() {
        const QStringView rest = text_.mid(at_);
        if (rest.startsWith(u"/*")) {
            FailHere(QStringLiteral("Comments are not part of the dialect: \"/*\""));
        }
        if (rest.startsWith(u"--")) {
            FailHere(QStringLiteral("Comments are not part of the dialect (and two minus signs need a blank "
                                    "between them): \"--\""));
        }
        const auto* const mark =
            std::find_if(std::begin(marks), std::end(marks), [&](QStringView each) { return rest.startsWith(each); });
        if (mark == std::end(marks)) {
            FailHere(QStringLiteral("\"%1\" is not part of the dialect").arg(text_[at_]));
        }
        Add(TokenKind::Mark, mark->size());
    }

    const SourceText& source_;
    QStringView text_;
    qsizetype at_ = 0;
    TokenList list_;
};

} // namespace

TokenList Tokenize(const SourceText& source) {
    return Lexer(source).Run();
}

bool IsKeyword(QStringView word) {
    return std::any_of(std::begin(keywords), std::end(keywords),
                       [&](QStringView keyword) { return keyword.compare(word, Qt::CaseInsensitive) == 0; });
}

void Fail(EngineErrorNumber number, const QString& what, const SourceText& source, qsizetype at) {
    int line = 1;
    qsizetype lineStart = 0;
    const qsizetype place = std::min(at, source.text.size());
    for (qsizetype i = 0; i < place; ++i) {
        const bool lineFeed = source.text[i] == u'\n';
        const bool loneReturn = source.text[i] == u'\r' && (i + 1 == source.text.size() || source.text[i + 1] != u'\n');
        if (lineFeed || loneReturn) {
            ++line;
            lineStart = i + 1;
        }
    }
    QString description = QStringLiteral("%1 at line %2, column %3").arg(what).arg(line).arg(place - lineStart + 1);
    if (!source.storedQuery.isEmpty()) {
        description += QStringLiteral(" of the stored query \"%1\"").arg(source.storedQuery);
    }
    throw EngineError(number, description + u'.', source.text.toString());
}

} // namespace velmora::engine::dialect
