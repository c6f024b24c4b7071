#include "base/LocaleText.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>

namespace velmora {

namespace {

// Makes every run of y in a date pattern a 4-digit year; quoted text stays.
QString WithLongYear(const QString& pattern) {
    QString result;
    bool quoted = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        quoted = c == u'\'' ? !quoted : quoted;
        if (c == u'y' && !quoted) {
            while (i + 1 < pattern.size() && pattern[i + 1] == u'y') {
                ++i;
            }
            result += QStringLiteral("yyyy");
        } else {
            result += c;
        }
    }
    return result;
}

// "h:mm AP" to "h:mm:ss AP", with the separator that stands before the minutes.
QString WithSeconds(QString pattern) {
    const qsizetype minutes = pattern.lastIndexOf(u'm');
    const qsizetype first = pattern.indexOf(u'm');
    if (first < 1 || pattern.contains(u's')) {
        return pattern;
    }
    return pattern.insert(minutes + 1, QString(pattern[first - 1]) + QStringLiteral("ss"));
}

QString OrderOfParts(const QString& pattern) {
    QString order;
    for (const QChar c : pattern) {
        const QChar part = c.toLower();
        if ((part == u'd' || part == u'm' || part == u'y') && !order.contains(part)) {
            order += part;
        }
    }
    return order;
}

QLocale Resolved(const QLocale& locale) {
    return locale.language() == QLocale::C ? QLocale(QLocale::English, QLocale::UnitedStates) : locale;
}

QString WithPlainBlanks(QString text) {
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.isSpace(); }, u' ');
    return text;
}

QDate ToQDate(Date day) {
    return QDate(1970, 1, 1).addDays(day.time_since_epoch().count());
}

} // namespace

LocaleText::LocaleText(const QLocale& locale)
    : locale_(Resolved(locale)), order_(OrderOfParts(locale_.dateFormat(QLocale::ShortFormat))),
      shortDate_(WithLongYear(locale_.dateFormat(QLocale::ShortFormat))),
      longDate_(WithLongYear(locale_.dateFormat(QLocale::LongFormat))), time_(locale_.timeFormat(QLocale::ShortFormat)),
      timeWithSeconds_(WithSeconds(time_)) {}

std::optional<LocaleText> LocaleText::ByName(const QString& name) {
    const QString plain = name.section(u'.', 0, 0).section(u'@', 0, 0).replace(u'-', u'_');
    if (plain == u"C" || plain == u"POSIX") {
        return LocaleText(QLocale::c());
    }
    static const QRegularExpression form(QStringLiteral("^[A-Za-z]{2,3}(_[A-Za-z]{4})?(_([A-Za-z]{2}|[0-9]{3}))?$"));
    const QLocale locale(plain);
    // An unknown name gives the C locale, an unknown territory another one.
    if (!form.match(plain).hasMatch() || locale.language() == QLocale::C ||
        !locale.name().startsWith(plain.section(u'_', 0, 0), Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    const QString territory = plain.contains(u'_') ? plain.section(u'_', -1) : QString();
    if (territory.size() == 2 && locale.name().section(u'_', -1).compare(territory, Qt::CaseInsensitive) != 0) {
        return std::nullopt;
    }
    return LocaleText(locale);
}

const QString& LocaleText::DayText(Date day) const {
    QString& text = days_[day.time_since_epoch().count()];
    if (text.isEmpty()) {
        text = WithPlainBlanks(locale_.toString(ToQDate(day), shortDate_));
    }
    return text;
}

const QString& LocaleText::TimeText(std::chrono::seconds ofDay) const {
    QString& text = times_[ofDay.count()];
    if (text.isEmpty()) {
        const QTime time = QTime(0, 0).addSecs(static_cast<int>(ofDay.count()));
        text = WithPlainBlanks(locale_.toString(time, time.second() == 0 ? time_ : timeWithSeconds_));
    }
    return text;
}

QString LocaleText::ShortDate(Date day) const {
    return DayText(day);
}

QString LocaleText::LongDate(Date day) const {
    return WithPlainBlanks(locale_.toString(ToQDate(day), longDate_));
}

QString LocaleText::GeneralDate(DateTime moment) const {
    const Date day = DateOf(moment);
    const auto ofDay = moment - StartOfDay(day);
    return ofDay.count() == 0 ? DayText(day) : DayText(day) + u' ' + TimeText(ofDay);
}

QString LocaleText::MediumTime(DateTime moment) const {
    return TimeText(std::chrono::floor<std::chrono::minutes>(moment - StartOfDay(DateOf(moment))));
}

std::optional<Date> LocaleText::ParseDate(const QString& text) const {
    static const QRegularExpression iso(QStringLiteral("^\\s*([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})\\s*$"));
    if (const auto match = iso.match(text); match.hasMatch()) {
        return MakeDate(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    }
    static const QRegularExpression form(
        QStringLiteral("^\\s*([0-9]{1,4})\\s*[/.\\- ]\\s*([0-9]{1,2})\\s*[/.\\- ]\\s*([0-9]{1,4})\\s*\\.?\\s*$"));
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    if (order_.size() != 3) {
        return std::nullopt;
    }
    int year = 0;
    int month = 0;
    int day = 0;
    for (int i = 0; i < 3; ++i) {
        const QString digits = match.captured(i + 1);
        const int number = digits.toInt();
        if (order_[i] == u'y') {
            if (digits.size() != 2 && digits.size() != 4) {
                return std::nullopt;
            }
            year = digits.size() == 4 ? number : number + (number < 30 ? 2000 : 1900);
        } else if (digits.size() > 2) {
            return std::nullopt;
        } else {
            (order_[i] == u'm' ? month : day) = number;
        }
    }
    return MakeDate(year, month, day);
}

} // namespace velmora
