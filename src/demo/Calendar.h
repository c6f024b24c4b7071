#pragma once

#include "base/DateTime.h"
#include "demo/Scale.h"

#include <vector>

namespace velmora::demo {

inline bool IsWorkingDay(Date day) {
    const int weekday = Weekday(day);
    return weekday >= 2 && weekday <= 6;
}

// The day itself, or the next one that is worked on.
Date WorkingDayFrom(Date day);

struct DayPlan {
    Date day{};
    int starts = 0; // reservations that begin on this day
};

// The days on which reservations start, oldest first, up to the last day that is planned ahead. A working day has about
// the scale's number of starts, a weekend day a few. `fixed` are the starts of occupancies that stand already, oldest
// first: those before the first day come on top, so that all together are exactly the scale's number of reservations.
std::vector<DayPlan> PlanDays(const Options& options, const Scale& scale, const std::vector<DateTime>& fixed);

} // namespace velmora::demo
