#pragma once

#include "base/DateTime.h"
#include "demo/Random.h"

namespace velmora::demo {

// How long events of a kind take.
enum class Span {
    Meeting,    // half an hour to three hours
    Interview,  // around an hour
    HalfDay,    // a morning, an afternoon, a day
    Course,     // a day, or several in a row
    BigEvent,   // a day and often the evening, until midnight
    Visit,      // one to four hours
    Laboratory, // hours to weeks
    DeskDays,   // one day to two weeks
    Loan,       // hours to a week
    Weeks,      // one to eight weeks
    Closure,    // whole days, from midnight to midnight
};

struct EventTimes {
    int startQuarter = 0; // of the day on which it starts, 0 to 95
    DateTime end{};       // on a quarter hour; exactly midnight for "through the day before"
};

// The times of one more event that starts on `day`.
EventTimes DrawTimes(Span span, Date day, Random& random);

} // namespace velmora::demo
