#include "base/Value.h"
#include "engine/sqlite/Functions.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace velmora::engine::sqlite {

namespace {

// Texts of values as the function Format makes them: always those of en_US, whatever the desk's locale, since they are
// written into the shared database. All throw FunctionFailure for a pattern that means nothing.

struct NamedPattern {
    QStringView name;
    QStringView pattern;
};

// The pattern that a name stands for; the pattern itself otherwise.
template <size_t size>
QStringView Meant(const std::array<NamedPattern, size>& names, QStringView pattern) {
    const auto found = std::find_if(names.begin(), names.end(), [&](const NamedPattern& entry) {
        return entry.name.compare(pattern, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? pattern : found->pattern;
}

constexpr std::array datePatterns = std::to_array<NamedPattern>({
    {u"Long Date", u"dddd, mmmm d, yyyy"},
    {u"Medium Date", u"dd-mmm-yy"},
    {u"Short Date", u"m/d/yyyy"},
    {u"Long Time", u"h:nn:ss AM/PM"},
    {u"Medium Time", u"h:nn AM/PM"},
    {u"Short Time", u"hh:nn"},
});

QString Digits(int number, qsizetype width) {
    return QString::number(number).rightJustified(width, u'0');
}

// Reads quoted and escaped parts of a pattern: true when `at` stood on one, which is then in `out`.
bool TakeVerbatim(QStringView pattern, qsizetype& at, QString& out) {
    if (pattern[at] == u'\\') {
        if (at + 1 < pattern.size()) {
            out += pattern[at + 1];
        }
        at += 2;
        return true;
    }
    if (pattern[at] != u'"') {
        return false;
    }
    const qsizetype end = pattern.indexOf(u'"', at + 1);
    if (end < 0) {
        FailRange(QStringLiteral("The pattern \"%1\" has a quote that is not closed.").arg(pattern));
    }
    out += pattern.mid(at + 1, end - at - 1);
    at = end + 1;
    return true;
}

class MomentFormatter {
public:
    MomentFormatter(DateTime moment, QStringView pattern)
        : moment_(moment), fields_(Fields(moment)), pattern_(pattern) {
        twelveHours_ = pattern.contains(u"AM/PM", Qt::CaseInsensitive) || pattern.contains(u"A/P", Qt::CaseInsensitive);
    }

    QString Run() {
        while (at_ < pattern_.size()) {
            if (TakeVerbatim(pattern_, at_, out_) || TakeHalfDay()) {
                continue;
            }
            const QChar letter = pattern_[at_].toLower();
            if (!letter.isLetter()) {
                out_ += pattern_[at_++];
                continue;
            }
            qsizetype count = 1;
            while (at_ + count < pattern_.size() && pattern_[at_ + count].toLower() == letter) {
                ++count;
            }
            Append(letter.unicode(), count);
            at_ += count;
        }
        return out_;
    }

private:
    bool TakeHalfDay() {
        const QStringView rest = pattern_.mid(at_);
        const bool half = rest.startsWith(u"AM/PM", Qt::CaseInsensitive);
        if (!half && !rest.startsWith(u"A/P", Qt::CaseInsensitive)) {
            return false;
        }
        const qsizetype letters = half ? 2 : 1;
        const bool afternoon = fields_.hour >= 12;
        out_ += rest.mid(afternoon ? letters + 1 : 0, letters);
        at_ += 2 * letters + 1;
        return true;
    }

    void Append(char16_t letter, qsizetype count) {
        const bool minutes = letter == u'm' && afterHours_ && count <= 2;
        afterHours_ = letter == u'h';
        if (minutes) {
            out_ += Digits(fields_.minute, count);
            return;
        }
        switch (letter) {
        case u'd':
            return AppendDay(count);
        case u'm':
            return AppendMonth(count);
        case u'y':
            return AppendYear(count);
        case u'h':
            return AppendNumber(twelveHours_ ? (fields_.hour + 11) % 12 + 1 : fields_.hour, count, 2);
        case u'n':
            return AppendNumber(fields_.minute, count, 2);
        case u's':
            return AppendNumber(fields_.second, count, 2);
        case u'q':
            return AppendNumber((fields_.month + 2) / 3, count, 1);
        case u'w':
            return AppendNumber(Weekday(DateOf(moment_)), count, 1);
        default:
            Refuse(count);
        }
    }

    void AppendNumber(int number, qsizetype count, qsizetype most) {
        if (count > most) {
            Refuse(count);
        }
        out_ += Digits(number, count);
    }
    void AppendDay(qsizetype count) {
        const int sundayIsLast = (Weekday(DateOf(moment_)) + 5) % 7 + 1;
        AppendNamed(fields_.day, QLocale::c().dayName(sundayIsLast), count);
    }
    void AppendMonth(qsizetype count) { AppendNamed(fields_.month, QLocale::c().monthName(fields_.month), count); }
    void AppendNamed(int number, const QString& name, qsizetype count) {
        if (count > 4) {
            Refuse(count);
        }
        if (count <= 2) {
            out_ += Digits(number, count);
        } else {
            out_ += count == 3 ? name.left(3) : name;
        }
    }
    void AppendYear(qsizetype count) {
        if (count == 1) {
            const auto start = MakeDate(fields_.year, 1, 1);
            out_ += QString::number(start ? (DateOf(moment_) - *start).count() + 1 : 0);
        } else if (count == 2) {
            out_ += Digits(fields_.year % 100, 2);
        } else if (count == 4) {
            out_ += Digits(fields_.year, 4);
        } else {
            Refuse(count);
        }
    }
    [[noreturn]] void Refuse(qsizetype count) const {
        FailRange(
            QStringLiteral("\"%1\" means nothing in the date pattern \"%2\" (text stands in quotes or behind \\).")
                .arg(pattern_.mid(at_, count), pattern_));
    }

    DateTime moment_;
    DateTimeFields fields_;
    QStringView pattern_;
    QString out_;
    qsizetype at_ = 0;
    bool twelveHours_ = false;
    bool afterHours_ = false;
};

using GeneralDateBuffer = std::array<char, 22>;

// 3/7/2026 2:15 PM; seconds only when they are not zero; the date alone at exactly midnight. The text is in `buffer`:
// statements write millions of these while the database is locked.
std::string_view GeneralDate(DateTime moment, GeneralDateBuffer& buffer) {
    const DateTimeFields fields = Fields(moment);
    char* at = buffer.data();
    const auto put = [&at](int number) { at = std::to_chars(at, at + 2, number).ptr; };
    const auto putTwo = [&at](int number) {
        *at++ = static_cast<char>('0' + number / 10);
        *at++ = static_cast<char>('0' + number % 10);
    };
    put(fields.month);
    *at++ = '/';
    put(fields.day);
    *at++ = '/';
    putTwo(fields.year / 100);
    putTwo(fields.year % 100);
    if (fields.hour != 0 || fields.minute != 0 || fields.second != 0) {
        *at++ = ' ';
        put((fields.hour + 11) % 12 + 1);
        *at++ = ':';
        putTwo(fields.minute);
        if (fields.second != 0) {
            *at++ = ':';
            putTwo(fields.second);
        }
        *at++ = ' ';
        *at++ = fields.hour >= 12 ? 'P' : 'A';
        *at++ = 'M';
    }
    return {buffer.data(), static_cast<size_t>(at - buffer.data())};
}

// By a pattern of d m y h n s, AM/PM, q and w, or by the name of one ("Short Date"). Without a pattern the general
// date. "m" right behind the hours means minutes.
QString FormatMoment(DateTime moment, QStringView pattern) {
    if (pattern.isEmpty() || pattern.compare(u"General Date", Qt::CaseInsensitive) == 0) {
        GeneralDateBuffer buffer;
        return QString::fromLatin1(QByteArrayView(GeneralDate(moment, buffer)));
    }
    return MomentFormatter(moment, Meant(datePatterns, pattern)).Run();
}

constexpr std::array numberPatterns = std::to_array<NamedPattern>({
    {u"General Number", u""},
    {u"Fixed", u"0.00"},
    {u"Standard", u"#,##0.00"},
    {u"Percent", u"0.00%"},
});

// A number pattern taken apart: text before and behind the digits, and how many of them there are.
struct NumberPattern {
    QString before;
    QString behind;
    qsizetype wholeZeros = 0;
    qsizetype decimals = 0;
    qsizetype decimalZeros = 0;
    bool groups = false;
    bool percent = false;
};

NumberPattern ReadNumberPattern(QStringView text) {
    NumberPattern pattern;
    bool digits = false;
    bool closed = false;
    bool point = false;
    for (qsizetype at = 0; at < text.size();) {
        QString& around = digits ? pattern.behind : pattern.before;
        if (TakeVerbatim(text, at, around)) {
            closed = digits;
            continue;
        }
        const QChar c = text[at++];
        const bool zero = c == u'0';
        if ((zero || c == u'#' || c == u'.' || (c == u',' && digits && !point)) && !closed) {
            digits = true;
            point = point || c == u'.';
            pattern.groups = pattern.groups || c == u',';
            pattern.wholeZeros += zero && !point ? 1 : 0;
            pattern.decimals += point && c != u'.' ? 1 : 0;
            pattern.decimalZeros = zero && point ? pattern.decimals : pattern.decimalZeros;
        } else if (c == u'%' || c == u' ' || c == u'$' || c == u'-' || c == u'+' || c == u'(' || c == u')') {
            pattern.percent = pattern.percent || c == u'%';
            around += c;
            closed = digits;
        } else {
            FailRange(
                QStringLiteral("\"%1\" means nothing in the number pattern \"%2\" (text stands in quotes or behind "
                               "\\).")
                    .arg(c)
                    .arg(text));
        }
    }
    return pattern;
}

// By a pattern of 0, #, the point, the comma and %, or by a name ("Fixed"). Without a pattern the shortest form.
QString FormatNumber(double number, QStringView pattern) {
    const QStringView meant = Meant(numberPatterns, pattern);
    if (meant.isEmpty()) {
        return NumberText(number);
    }
    const NumberPattern form = ReadNumberPattern(meant);
    constexpr qsizetype mostDecimals = 15;
    const int decimals = static_cast<int>(std::min(form.decimals, mostDecimals));
    const double scale = std::pow(10.0, decimals);
    const double value = form.percent ? number * 100 : number;
    const double scaled = std::round(std::abs(value) * scale);
    const bool exact = scaled < 9007199254740992.0;
    QString digits = QString::number(exact ? scaled / scale : std::abs(value), 'f', decimals);
    const bool negative = value < 0 && std::any_of(digits.begin(), digits.end(), [](QChar c) { return c > u'0'; });

    QString whole = digits.section(u'.', 0, 0);
    QString fraction = digits.section(u'.', 1);
    while (fraction.size() > form.decimalZeros && fraction.endsWith(u'0')) {
        fraction.chop(1);
    }
    whole = whole == u"0" && form.wholeZeros == 0 ? QString() : whole.rightJustified(form.wholeZeros, u'0');
    if (form.groups) {
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3) {
            whole.insert(at, u',');
        }
    }
    const bool point = form.decimals > 0 && !fraction.isEmpty();
    return (negative ? QStringLiteral("-") : QString()) + form.before + whole +
           (point ? QStringLiteral(".") : QString()) + fraction + form.behind;
}

void GeneralDateText(sqlite3_context* context, const Arguments& arguments) {
    GeneralDateBuffer buffer;
    Return(context, arguments.IsMoment(0) ? GeneralDate(arguments.Moment(0), buffer) : arguments.Utf8(0));
}

void Format(sqlite3_context* context, const Arguments& arguments) {
    if (arguments.Count() == 1 && !arguments.IsNumber(0)) {
        GeneralDateBuffer buffer;
        Return(context, GeneralDate(arguments.Moment(0), buffer));
        return;
    }
    const QString pattern = arguments.Count() == 2 ? arguments.Text(1) : QString();
    if (arguments.IsNumber(0)) {
        Return(context, FormatNumber(arguments.Real(0), pattern));
    } else {
        Return(context, FormatMoment(arguments.Moment(0), pattern));
    }
}

constexpr std::array functions = std::to_array<ScalarFunction>({
    {"dialect_format", 1, Scalar<Format>},
    {"dialect_format", 2, Scalar<Format>},
    {"dialect_general_date", 1, Scalar<GeneralDateText>},
});

} // namespace

std::span<const ScalarFunction> FormatFunctions() {
    return functions;
}

} // namespace velmora::engine::sqlite
