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

} // namespace velmora
