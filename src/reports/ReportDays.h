#pragma once

#include "base/LocaleText.h"
#include "reports/Requests.h"

namespace velmora {

// The days that a report covers.
struct ReportDays {
    // From the first moment of `start` up to the first moment of `end`.
    Date start;
    Date end;
    // How the title names them: " for 3/9/2026", " for 3/7/2026 to 3/9/2026" or " for 3/9/2026 Through 3/10/2026".
    QString phrase;
};

// The days of a daily report. The next working day covers the weekend before it, so that nothing on it is missed.
// Throws Error for another day without a date.
ReportDays DailyReportDays(const DaySelection& selection, Date today, const LocaleText& locale);

// The days that the occupant and the directory report cover. The next working day is that day alone, without the
// weekend before it. Throws Error for another day without a date.
ReportDays OccupancyDays(const DaySelection& selection, Date today, const LocaleText& locale);

// The day of a report on one day. Throws Error without it.
ReportDays OneReportDay(const std::optional<Date>& date, const LocaleText& locale);

// The day that follows on a working day; on Fridays, Saturdays and Sundays the next Monday.
Date NextWorkingDay(Date today);

// What the report-day options of the daily page read: the day in long form and when reports of it are run.
struct DayCaptions {
    QString nextWorkingDay;
    QString currentDay;
    static DayCaptions On(Date today, const LocaleText& locale);
};

} // namespace velmora
