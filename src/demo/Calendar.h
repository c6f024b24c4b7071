#pragma once

#include "base/DateTime.h"

namespace velmora::demo {

inline bool IsWorkingDay(Date day) {
    const int weekday = Weekday(day);
    return weekday >= 2 && weekday <= 6;
}

// The day itself, or the next one that is worked on.
inline Date WorkingDayFrom(Date day) {
    while (!IsWorkingDay(day)) {
        day += std::chrono::days(1);
    }
    return day;
}

} // namespace velmora::demo
