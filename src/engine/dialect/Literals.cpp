#include "engine/dialect/Literals.h"

#include <QRegularExpression>

#include <cmath>

namespace velmora::engine::dialect {

namespace {

bool IsDigitAt(QStringView text, qsizetype at) {
    return at < text.size() && ClassOf(text[at].unicode()) == CharClass::Digit;
}

// The place behind the digits that start at `at`.
qsizetype SkipDigits(QStringView text, qsizetype at) {
    while (IsDigitAt(text, at)) {
        ++at;
    }
    return at;
}

ScannedLiteral ScanNumber(QStringView text, qsizetype at) {
    qsizetype end = SkipDigits(text, at);
    bool real = false;
    if (end < text.size() && text[end] == u'.' && IsDigitAt(text, end + 1)) {
        real = true;
        end = SkipDigits(text, end + 1);
    }
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        const bool sign = end + 1 < text.size() && (text[end + 1] == u'+' || text[end + 1] == u'-');
        const qsizetype exponent = end + (sign ? 2 : 1);
        if (IsDigitAt(text, exponent)) {
            real = true;
            end = SkipDigits(text, exponent);
        }
    }
    if (end < text.size() && IsWordPart(text[end].unicode())) {
        return {{}, end, LiteralFault::BadNumber, {}};
    }
    constexpr qsizetype safeDigits = 18;
    if (!real && end - at <= safeDigits) {
        qint64 number = 0;
        for (qsizetype i = at; i < end; ++i) {
            number = number * 10 + (text[i].unicode() - u'0');
        }
        return {number, end, LiteralFault::None, {}};
    }
    // A whole number beyond 18 digits is kept as a real one.
    bool good = false;
    const double number = text.mid(at, end - at).toDouble(&good);
    return {number, end, good && std::isfinite(number) ? LiteralFault::None : LiteralFault::BadNumber, {}};
}

ScannedLiteral ScanText(QStringView text, qsizetype at) {
    const QChar quote = text[at];
    QString value;
    for (qsizetype from = at + 1;;) {
        const qsizetype end = text.indexOf(quote, from);
        if (end < 0) {
            return {{}, text.size(), LiteralFault::Unterminated, {}};
        }
        value += text.mid(from, end - from);
        if (end + 1 == text.size() || text[end + 1] != quote) {
            return {value, end + 1, LiteralFault::None, {}};
        }
        value += quote;
        from = end + 2;
    }
}

// "%1" stands for blanks, which may stand between any two parts of a date.
QRegularExpression DatePattern(QString pattern) {
    return QRegularExpression(pattern.replace(QStringLiteral("%1"), QStringLiteral("[ \t\r\n]*")),
                              QRegularExpression::DotMatchesEverythingOption |
                                  QRegularExpression::CaseInsensitiveOption);
}

constexpr QStringView badForm = u"a date is written as #month/day/year# or #month/day/year hours:minutes:seconds#";

// Reads "hours:minutes[:seconds] [AM|PM]". Returns what is wrong; empty for a good time.
QStringView ReadTime(QStringView text, DateTimeFields& fields) {
    static const QRegularExpression form =
        DatePattern(QStringLiteral(R"(^%1(\d\d?)%1:%1(\d\d?)(?!\d)(?:%1:%1(\d\d?)(?!\d)|(?!%1:))%1(AM|PM)?%1(.*))"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        return badForm;
    }
    fields.hour = match.capturedView(1).toInt();
    fields.minute = match.capturedView(2).toInt();
    fields.second = match.capturedView(3).toInt();
    bool possible = true;
    if (const QStringView half = match.capturedView(4); !half.isEmpty()) {
        possible = fields.hour >= 1 && fields.hour <= 12;
        fields.hour = fields.hour % 12 + (half.front().toLower() == u'a' ? 0 : 12);
    }
    if (!possible || fields.hour > 23 || fields.minute > 59 || fields.second > 59) {
        return u"there is no such time";
    }
    return match.capturedView(5).isEmpty() ? QStringView() : badForm;
}

int NumberAt(QStringView text, qsizetype at, qsizetype digits) {
    int number = 0;
    for (qsizetype i = at; i < at + digits; ++i) {
        if (!IsDigitAt(text, i)) {
            return -1;
        }
        number = number * 10 + (text[i].unicode() - u'0');
    }
    return number;
}

// The date of "03/07/2026", as the program writes it into a text for each person of a report; none for another form.
std::optional<Date> ReadPlainDate(QStringView inner) {
    if (inner.size() != 10 || inner[2] != u'/' || inner[5] != u'/') {
        return {};
    }
    return MakeDate(NumberAt(inner, 6, 4), NumberAt(inner, 0, 2), NumberAt(inner, 3, 2));
}

// Reads what stands between two "#" marks. Returns what is wrong; empty for a good date.
QStringView ReadDate(QStringView inner, Value& value) {
    if (const auto day = ReadPlainDate(inner)) {
        value = StartOfDay(*day);
        return {};
    }
    static const QRegularExpression form = DatePattern(QStringLiteral(R"(^%1(\d\d?)%1/%1(\d\d?)%1/%1(\d+)%1(.*))"));
    const QRegularExpressionMatch match = form.match(inner);
    if (!match.hasMatch()) {
        return badForm;
    }
    if (match.capturedLength(3) != 4) {
        return u"the year of a date needs 4 digits";
    }
    DateTimeFields fields;
    fields.month = match.capturedView(1).toInt();
    fields.day = match.capturedView(2).toInt();
    fields.year = match.capturedView(3).toInt();
    if (!MakeDate(fields.year, fields.month, fields.day)) {
        return u"there is no such day";
    }
    const QStringView time = match.capturedView(4);
    const QStringView problem = time.isEmpty() ? QStringView() : ReadTime(time, fields);
    if (problem.isEmpty()) {
        value = *MakeDateTime(fields);
    }
    return problem;
}

ScannedLiteral ScanDate(QStringView text, qsizetype at) {
    const qsizetype close = text.indexOf(u'#', at + 1);
    if (close < 0) {
        return {{}, text.size(), LiteralFault::Unterminated, {}};
    }
    ScannedLiteral date;
    date.end = close + 1;
    date.dateProblem = ReadDate(text.mid(at + 1, close - at - 1), date.value);
    date.fault = date.dateProblem.isEmpty() ? LiteralFault::None : LiteralFault::BadDate;
    return date;
}

} // namespace

bool LiteralStartsAt(QStringView text, qsizetype at) {
    switch (ClassOf(text[at].unicode())) {
    case CharClass::Quote:
    case CharClass::Hash:
        return true;
    case CharClass::Digit:
        return at == 0 || !IsWordPart(text[at - 1].unicode());
    case CharClass::Dot:
        return IsDigitAt(text, at + 1) && (at == 0 || (!IsWordPart(text[at - 1].unicode()) && text[at - 1] != u']'));
    default:
        return false;
    }
}

ScannedLiteral ScanLiteral(QStringView text, qsizetype at) {
    switch (ClassOf(text[at].unicode())) {
    case CharClass::Quote:
        return ScanText(text, at);
    case CharClass::Hash:
        return ScanDate(text, at);
    default:
        return ScanNumber(text, at);
    }
}

} // namespace velmora::engine::dialect
