#include "base/DatePattern.h"

#include <QDateTime>

#include <algorithm>

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

// The texts of the values 0 to `last`.
template <typename TextOf>
QStringList Texts(int last, TextOf textOf) {
    QStringList texts;
    for (int value = 0; value <= last; ++value) {
        texts += WithPlainBlanks(textOf(value));
    }
    return texts;
}

} // namespace

DatePattern::DatePattern(QStringView pattern, const QLocale& locale) {
    const bool halfDays = HasHalfDays(pattern);
    while (!pattern.isEmpty()) {
        if (pattern[0] != u'\'') {
            pattern = pattern.mid(AddLetters(pattern, locale, halfDays));
            continue;
        }
        // Quoted text; a doubled quote, inside or outside, is the quote itself.
        if (pattern.startsWith(u"''")) {
            AddText(u"'"_s);
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
    using Fields = const DateTimeFields&;
    const char16_t letter = pattern[0].unicode();
    const bool ofDate = letter == u'd' || letter == u'M' || letter == u'y';
    qsizetype size = Repeats(pattern, ofDate ? 4 : 2);
    if (letter == u'a' || letter == u'A') {
        size = pattern.size() > 1 && pattern[1].toLower() == u'p' ? 2 : 1;
    }
    const QString token = pattern.left(size).toString();
    const auto date = [&](int year, int month, int day) { return locale.toString(QDate(year, month, day), token); };
    const auto time = [&](int hour, int minute, int second) {
        return locale.toString(QTime(hour, minute, second), token);
    };
    switch (letter) {
    case u'd':
        if (size < 3) {
            items_.push_back({[](Fields of) { return of.day; }, Texts(31, [&](int n) { return date(2000, 1, n); })});
        } else {
            // January 2, 2000, was a Sunday, the first day of Weekday.
            items_.push_back({[](Fields of) { return Weekday(*MakeDate(of.year, of.month, of.day)); },
                              Texts(7, [&](int n) { return date(2000, 1, 1 + n); })});
        }
        break;
    case u'M':
        items_.push_back({[](Fields of) { return of.month; }, Texts(12, [&](int n) { return date(2000, n, 1); })});
        break;
    case u'y': {
        const QStringList twoDigits = Texts(99, [&](int n) { return locale.toString(QDate(2000 + n, 1, 1), u"yy"_s); });
        items_.push_back({[](Fields of) { return of.year / 100 % 100; }, twoDigits});
        items_.push_back({[](Fields of) { return of.year % 100; }, twoDigits});
        break;
    }
    case u'h':
        if (halfDays) {
            items_.push_back({[](Fields of) { return of.hour % 12; },
                              Texts(11, [&](int n) { return time(n == 0 ? 12 : n, 0, 0); })});
            break;
        }
        [[fallthrough]];
    case u'H':
    case u'a':
    case u'A':
        items_.push_back({[](Fields of) { return of.hour; }, Texts(23, [&](int n) { return time(n, 0, 0); })});
        break;
    case u'm':
        items_.push_back({[](Fields of) { return of.minute; }, Texts(59, [&](int n) { return time(0, n, 0); })});
        break;
    case u's':
        items_.push_back({[](Fields of) { return of.second; }, Texts(59, [&](int n) { return time(0, 0, n); })});
        break;
    default:
        AddText(pattern.left(1).toString());
        return 1;
    }
    return size;
}

void DatePattern::AddText(const QString& text) {
    items_.push_back({[](const DateTimeFields&) { return 0; }, {WithPlainBlanks(text)}});
}

void DatePattern::Append(Buffer& out, const DateTimeFields& fields) const {
    for (const Item& item : items_) {
        const QString& text = item.texts[item.valueOf(fields)];
        out.append(text.constData(), text.size());
    }
}

} // namespace velmora
