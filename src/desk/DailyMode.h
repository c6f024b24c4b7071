#pragma once

#include "base/LocaleText.h"
#include "desk/DeskState.h"

namespace velmora {

enum class DailyVariant { Starts, Ends, Combined };

// The three choices of the day, in the order of the option buttons.
enum class DayChoice { NextWorkingDay, CurrentDay, OtherDay };

// What a ReportDayMode stands for.
struct DailyMode {
    DailyVariant variant = DailyVariant::Starts;
    DayChoice day = DayChoice::NextWorkingDay;

    // Throws Error for a number that no button sets.
    static DailyMode Decode(qint16 reportDayMode);
    // The ReportDayMode that stands for it.
    qint16 Code() const;
    // English.
    QString Title() const;
    // The stored query whose rows are reported.
    QString QueryName() const;
};

// The days that a daily report covers.
struct ReportDays {
    // From the first moment of `start` up to the first moment of `end`.
    Date start;
    Date end;
    // How the title names them: " for 3/9/2026", " for 3/7/2026 to 3/9/2026" or " for 3/9/2026 Through 3/10/2026".
    QString phrase;
};

// The next working day covers the weekend before it, so that nothing on it is missed. Throws Error for another day
// without a date.
ReportDays DailyReportDays(DayChoice choice, Date today, const DeskState& state, const LocaleText& locale);

} // namespace velmora
