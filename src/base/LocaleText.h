#pragma once

#include "base/DateTime.h"

#include <QHash>
#include <QLocale>
#include <QString>

#include <optional>

namespace velmora {

// The one place that writes dates and times as people read them, and reads what they type, for one locale.
// Years always have 4 digits; every blank is a plain blank. The C and POSIX locales mean en_US.
class LocaleText {
public:
    explicit LocaleText(const QLocale& locale);
    // By name ("de_DE", "en-GB"); none when the system knows no such locale.
    static std::optional<LocaleText> ByName(const QString& name);

    // 3/7/2026
    QString ShortDate(Date day) const;
    // Saturday, March 7, 2026
    QString LongDate(Date day) const;
    // 3/7/2026 2:15 PM; seconds only when they are not zero; the date alone at exactly midnight.
    QString GeneralDate(DateTime moment) const;
    // 5:30 PM
    QString MediumTime(DateTime moment) const;

    // Reads a date typed in the locale's order of day, month and year with a 2- or 4-digit year, any of "/", "-",
    // "." or blanks between, or as YYYY-MM-DD; a 2-digit year below 30 is of this century, else of the last. None for
    // a date that does not exist and for any other text.
    std::optional<Date> ParseDate(const QString& text) const;

    const QLocale& Locale() const { return locale_; }

private:
    const QString& TimeText(std::chrono::seconds ofDay) const;
    const QString& DayText(Date day) const;

    QLocale locale_;
    // The letters d, m and y in the order in which the locale's short date has them.
    QString order_;
    QString shortDate_;
    QString longDate_;
    QString time_;
    QString timeWithSeconds_;
    // The texts of days and times of day that were written before: the toolkit takes long to write one, and the rows of
    // a report have few different ones.
    mutable QHash<qint64, QString> days_;
    mutable QHash<qint64, QString> times_;
};

} // namespace velmora
