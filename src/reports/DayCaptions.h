#pragma once

#include "base/LocaleText.h"

namespace velmora {

// The day that follows on a working day; on Fridays, Saturdays and Sundays the next Monday.
Date NextWorkingDay(Date today);

// What the report-day options of the daily page read: the day in long form and when reports of it are run.
struct DayCaptions {
    QString nextWorkingDay;
    QString currentDay;
    static DayCaptions On(Date today, const LocaleText& locale);
};

} // namespace velmora
