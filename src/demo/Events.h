#pragma once

#include "base/DateTime.h"
#include "demo/Random.h"

#include <QString>
#include <QStringList>

#include <map>
#include <vector>

namespace velmora::demo {

// What people call their reservations, by event type.
class EventNames {
public:
    EventNames();

    // A name for one more event of the type, which takes place on `day`. Throws std::out_of_range for a type without
    // names.
    QString Next(const QString& eventType, Date day, Random& random) const;

private:
    // By type: for each pattern of the word lists, every name that it can make.
    std::map<QString, std::vector<QStringList>> types_;
    QStringList months_;
};

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

constexpr int quartersOfDay = 24 * 4;

struct EventTimes {
    int startQuarter = 0; // of the day on which it starts, 0 to 95
    DateTime end{};       // on a quarter hour; exactly midnight for "through the day before"
};

// The times of one more event that starts on `day`.
EventTimes DrawTimes(Span span, Date day, Random& random);

} // namespace velmora::demo
