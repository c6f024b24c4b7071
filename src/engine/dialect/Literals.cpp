#include "engine/dialect/Literals.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace velmora::engine::dialect {

CharClass detail::ClassBeyondAscii(char16_t c) {
    const QChar unit(c);
    return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate() ? CharClass::Word : CharClass::Other;
}

namespace {

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// The place behind the digits that start at `at`.
qsizetype SkipDigits(QStringView text, qsizetype at) {
    while (at < text.size() && IsDigit(text[at].unicode())) {
        ++at;
    }
    return at;
}

std::optional<double> ReadReal(QStringView digits) {
    std::string ascii;
    ascii.reserve(static_cast<size_t>(digits.size()));
    for (const QChar c : digits) {
        ascii.push_back(static_cast<char>(c.unicode()));
    }
    double number = 0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), number);
    if (error != std::errc() || end != ascii.data() + ascii.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

} // namespace

ScannedLiteral ScanNumber(QStringView text, qsizetype at) {
    ScannedLiteral result;
    qsizetype end = SkipDigits(text, at);
    bool real = false;
    if (end + 1 < text.size() && text[end] == u'.' && IsDigit(text[end + 1].unicode())) {
        real = true;
        end = SkipDigits(text, end + 1);
    }
    if (end < text.size() && (text[end] == u'e' || text[end] == u'E')) {
        qsizetype exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == u'+' || text[exponent] == u'-')) {
            ++exponent;
        }
        const qsizetype behind = SkipDigits(text, exponent);
        if (behind > exponent) {
            real = true;
            end = behind;
        }
    }
    result.end = end;
    if (end < text.size() && IsWordPart(text[end].unicode())) {
        result.fault = LiteralFault::BadNumber;
        return result;
    }
    constexpr qsizetype safeDigits = 18;
    if (!real && end - at <= safeDigits) {
        qint64 number = 0;
        for (qsizetype i = at; i < end; ++i) {
            number = number * 10 + (text[i].unicode() - u'0');
        }
        result.value = number;
    } else if (const auto number = ReadReal(text.mid(at, end - at))) {
        // A whole number beyond 18 digits is kept as a real one.
        result.value = *number;
    } else {
        result.fault = LiteralFault::BadNumber;
    }
    return result;
}

ScannedLiteral ScanText(QStringView text, qsizetype at) {
    ScannedLiteral result;
    const QChar quote = text[at];
    qsizetype from = at + 1;
    QString joined;
    for (qsizetype i = from; i < text.size(); ++i) {
        if (text[i] != quote) {
            continue;
        }
        if (i + 1 < text.size() && text[i + 1] == quote) {
            joined += text.mid(from, i + 1 - from);
            from = i + 2;
            ++i;
            continue;
        }
        const QStringView last = text.mid(from, i - from);
        result.value = joined.isEmpty() ? last.toString() : joined.append(last);
        result.end = i + 1;
        return result;
    }
    result.end = text.size();
    result.fault = LiteralFault::Unterminated;
    return result;
}

namespace {

// Reads the parts of a date literal from left to right; blanks may stand between any two of them.
class DateReader {
public:
    explicit DateReader(QStringView text) : text_(text) {}

    // The number at this place with its count of digits; -1 without one.
    int Number(int& digits) {
        SkipBlanks();
        const qsizetype from = at_;
        int number = 0;
        while (at_ < text_.size() && IsDigit(text_[at_].unicode()) && at_ - from < 5) {
            number = number * 10 + (text_[at_].unicode() - u'0');
            ++at_;
        }
        digits = static_cast<int>(at_ - from);
        return digits == 0 ? -1 : number;
    }
    bool Take(char16_t mark) {
        SkipBlanks();
        if (at_ < text_.size() && text_[at_] == QChar(mark)) {
            ++at_;
            return true;
        }
        return false;
    }
    bool AtEnd() {
        SkipBlanks();
        return at_ == text_.size();
    }
    QChar Peek() {
        SkipBlanks();
        return at_ < text_.size() ? text_[at_] : QChar();
    }
    bool TakeWord(QStringView word) {
        SkipBlanks();
        if (text_.mid(at_, word.size()).compare(word, Qt::CaseInsensitive) != 0) {
            return false;
        }
        at_ += word.size();
        return true;
    }

private:
    void SkipBlanks() {
        while (at_ < text_.size() && ClassOf(text_[at_].unicode()) == CharClass::Blank) {
            ++at_;
        }
    }

    QStringView text_;
    qsizetype at_ = 0;
};

enum class DateProblem { None, Form, Year, NoSuchDay, NoSuchTime };

// Reads "hours:minutes[:seconds] [AM|PM]".
DateProblem ReadTime(DateReader& reader, DateTimeFields& fields) {
    int digits = 0;
    fields.hour = reader.Number(digits);
    if (fields.hour < 0 || digits > 2 || !reader.Take(u':')) {
        return DateProblem::Form;
    }
    fields.minute = reader.Number(digits);
    if (fields.minute < 0 || digits > 2) {
        return DateProblem::Form;
    }
    if (reader.Take(u':')) {
        fields.second = reader.Number(digits);
        if (fields.second < 0 || digits > 2) {
            return DateProblem::Form;
        }
    }
    const bool morning = reader.TakeWord(u"AM");
    if (morning || reader.TakeWord(u"PM")) {
        if (fields.hour < 1 || fields.hour > 12) {
            return DateProblem::NoSuchTime;
        }
        fields.hour = fields.hour % 12 + (morning ? 0 : 12);
    }
    if (fields.hour > 23 || fields.minute > 59 || fields.second > 59) {
        return DateProblem::NoSuchTime;
    }
    return DateProblem::None;
}

DateProblem ReadDate(QStringView inner, std::optional<DateTime>& moment) {
    DateReader reader(inner);
    DateTimeFields fields;
    int digits = 0;
    fields.month = reader.Number(digits);
    if (fields.month < 0 || digits > 2 || !reader.Take(u'/')) {
        return DateProblem::Form;
    }
    fields.day = reader.Number(digits);
    if (fields.day < 0 || digits > 2 || !reader.Take(u'/')) {
        return DateProblem::Form;
    }
    fields.year = reader.Number(digits);
    if (fields.year < 0) {
        return DateProblem::Form;
    }
    if (digits != 4) {
        return DateProblem::Year;
    }
    if (!MakeDate(fields.year, fields.month, fields.day)) {
        return DateProblem::NoSuchDay;
    }
    if (!reader.AtEnd()) {
        const DateProblem problem = ReadTime(reader, fields);
        if (problem != DateProblem::None) {
            return problem;
        }
    }
    if (!reader.AtEnd()) {
        return DateProblem::Form;
    }
    moment = MakeDateTime(fields);
    return DateProblem::None;
}

} // namespace

ScannedLiteral ScanDate(QStringView text, qsizetype at) {
    ScannedLiteral result;
    qsizetype end = at + 1;
    while (end < text.size() && text[end] != u'#') {
        ++end;
    }
    if (end == text.size()) {
        result.end = end;
        result.fault = LiteralFault::Unterminated;
        return result;
    }
    result.end = end + 1;
    std::optional<DateTime> moment;
    ReadDate(text.mid(at + 1, end - at - 1), moment);
    if (moment) {
        result.value = *moment;
    } else {
        result.fault = LiteralFault::BadDate;
    }
    return result;
}

QString DateFault(QStringView inner) {
    std::optional<DateTime> moment;
    switch (ReadDate(inner, moment)) {
    case DateProblem::None:
        return {};
    case DateProblem::Form:
        return QStringLiteral("a date is written as #month/day/year# or #month/day/year hours:minutes:seconds#");
    case DateProblem::Year:
        return QStringLiteral("the year of a date needs 4 digits");
    case DateProblem::NoSuchDay:
        return QStringLiteral("there is no such day");
    case DateProblem::NoSuchTime:
        return QStringLiteral("there is no such time");
    }
    return {};
}

} // namespace velmora::engine::dialect
