#include "base/DatePattern.h"

#include <algorithm>
#include <array>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

QString WithPlainBlanks(QString text) {
    for (QChar& c : text) {
        if (c.isSpace()) {
            c = u' ';
        }
    }
    return text;
}

QStringList MonthNames(const QLocale& locale, QLocale::FormatType format) {
    QStringList names;
    for (int month = 1; month <= 12; ++month) {
        names += WithPlainBlanks(locale.monthName(month, format));
    }
    return names;
}

// Sunday first.
QStringList DayNames(const QLocale& locale, QLocale::FormatType format) {
    QStringList names;
    for (int day = 0; day < 7; ++day) {
        names += WithPlainBlanks(locale.dayName(day == 0 ? 7 : day, format));
    }
    return names;
}

// The marks of morning and afternoon: "Ap" in the locale's own letter case, "AP" in capitals, "ap" in small letters.
QStringList HalfDayNames(const QLocale& locale, QStringView letters) {
    QStringList names{locale.amText(), locale.pmText()};
    const bool capitalA = letters[0] == u'A';
    if (letters.size() == 1 || capitalA == (letters[1] == u'P')) {
        for (QString& name : names) {
            name = capitalA ? locale.toUpper(name) : locale.toLower(name);
        }
    }
    return {WithPlainBlanks(names[0]), WithPlainBlanks(names[1])};
}

// Whether the pattern counts the hours in half days.
bool HasHalfDays(QStringView pattern) {
    bool quoted = false;
    return std::any_of(pattern.begin(), pattern.end(), [&quoted](QChar c) {
        quoted = c == u'\'' ? !quoted : quoted;
        return !quoted && (c == u'a' || c == u'A');
    });
}

// How many times the first letter stands in a row, at most `limit`.
int Repeats(QStringView pattern, int limit) {
    int count = 1;
    while (count < limit && count < pattern.size() && pattern[count] == pattern[0]) {
        ++count;
    }
    return count;
}

} // namespace

DatePattern::DatePattern(QStringView pattern, const QLocale& locale) : zero_(locale.zeroDigit()) {
    const bool halfDays = HasHalfDays(pattern);
    while (!pattern.isEmpty()) {
        if (pattern[0] != u'\'') {
            pattern = pattern.mid(AddLetters(pattern, locale, halfDays));
            continue;
        }
        // Quoted text; a doubled quote, inside or outside, is the quote itself.
        if (pattern.startsWith(u"''")) {
            AddText(u"'");
            pattern = pattern.mid(2);
            continue;
        }
        qsizetype end = pattern.indexOf(u'\'', 1);
        while (end >= 0 && end + 1 < pattern.size() && pattern[end + 1] == u'\'') {
            end = pattern.indexOf(u'\'', end + 2);
        }
        AddText((end < 0 ? pattern.mid(1) : pattern.mid(1, end - 1)).toString().replace(u"''"_s, u"'"_s));
        pattern = end < 0 ? QStringView() : pattern.mid(end + 1);
    }
}

qsizetype DatePattern::AddLetters(QStringView pattern, const QLocale& locale, bool halfDays) {
    const auto nameFormat = [](int repeats) { return repeats == 3 ? QLocale::ShortFormat : QLocale::LongFormat; };
    const int ofFour = Repeats(pattern, 4);
    const int ofTwo = std::min(ofFour, 2);
    switch (pattern[0].unicode()) {
    case u'd':
        ofFour < 3 ? AddPart(Part::Day, ofFour) : AddPart(Part::DayName, 0, DayNames(locale, nameFormat(ofFour)));
        return ofFour;
    case u'M':
        ofFour < 3 ? AddPart(Part::Month, ofFour) : AddPart(Part::MonthName, 0, MonthNames(locale, nameFormat(ofFour)));
        return ofFour;
    case u'y':
        AddPart(Part::Year, 4);
        return ofFour;
    case u'h':
        AddPart(halfDays ? Part::HourOfHalfDay : Part::Hour, ofTwo);
        return ofTwo;
    case u'H':
        AddPart(Part::Hour, ofTwo);
        return ofTwo;
    case u'm':
        AddPart(Part::Minute, ofTwo);
        return ofTwo;
    case u's':
        AddPart(Part::Second, ofTwo);
        return ofTwo;
    case u'a':
    case u'A': {
        const qsizetype size = pattern.size() > 1 && pattern[1].toLower() == u'p' ? 2 : 1;
        AddPart(Part::HalfDay, 0, HalfDayNames(locale, pattern.left(size)));
        return size;
    }
    default:
        AddText(pattern.left(1));
        return 1;
    }
}

void DatePattern::AddText(QStringView text) {
    if (items_.empty() || items_.back().part != Part::Text) {
        items_.push_back({Part::Text, 0, {QString()}});
    }
    items_.back().texts[0] += WithPlainBlanks(text.toString());
}

void DatePattern::AddPart(Part part, int width, QStringList texts) {
    items_.push_back({part, width, std::move(texts)});
}

int DatePattern::NumberOf(Part part, const DateTimeFields& fields) {
    switch (part) {
    case Part::Day:
        return fields.day;
    case Part::Month:
        return fields.month;
    case Part::Year:
        return fields.year;
    case Part::Hour:
        return fields.hour;
    case Part::HourOfHalfDay:
        return fields.hour % 12 == 0 ? 12 : fields.hour % 12;
    case Part::Minute:
        return fields.minute;
    default:
        return fields.second;
    }
}

void DatePattern::AppendNumber(QString& out, int number, int width) const {
    constexpr int most = 4;
    std::array<int, most> digits{};
    int count = 0;
    for (; count < most && (number > 0 || count < std::max(width, 1)); ++count) {
        digits.at(static_cast<size_t>(count)) = number % 10;
        number /= 10;
    }
    while (count-- > 0) {
        const int digit = digits.at(static_cast<size_t>(count));
        if (zero_.size() == 1) {
            out += QChar(static_cast<char16_t>(zero_[0].unicode() + digit));
        } else {
            const auto zero = static_cast<int>(zero_.toUcs4().value(0, u'0'));
            const auto letter = static_cast<char32_t>(zero + digit);
            out += QString::fromUcs4(&letter, 1);
        }
    }
}

void DatePattern::Append(QString& out, const DateTimeFields& fields) const {
    for (const Item& item : items_) {
        switch (item.part) {
        case Part::Text:
            out += item.texts[0];
            break;
        case Part::DayName:
            if (const auto day = MakeDate(fields.year, fields.month, fields.day)) {
                out += item.texts[Weekday(*day) - 1];
            }
            break;
        case Part::MonthName:
            out += item.texts.value(fields.month - 1);
            break;
        case Part::HalfDay:
            out += item.texts[fields.hour < 12 ? 0 : 1];
            break;
        default:
            AppendNumber(out, NumberOf(item.part, fields), item.width);
        }
    }
}

} // namespace velmora
