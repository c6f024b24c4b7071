#pragma once

#include "base/DatePattern.h"
#include "base/DateTime.h"

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
    QLocale locale_;
    // The letters d, m and y in the order in which the locale's short date has them.
    QString order_;
    DatePattern shortDate_;
    DatePattern longDate_;
    DatePattern time_;
    DatePattern timeWithSeconds_;
};

} // namespace velmora
