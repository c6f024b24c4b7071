#pragma once

#include "base/DateTime.h"

#include <QString>

#include <optional>

namespace velmora {

// The two dates of a date-range control; none while a box holds no date.
struct DateRange {
    std::optional<Date> StartDate;
    std::optional<Date> EndDate;
};

// Which reservations the task view selects, by the names of its page's controls.
struct TaskChoices {
    // 0 move in, 1 move out, 2 phone connect, 3 phone disconnect.
    qint16 ViewType = 0;
    DateRange DateRange1;
    // Without conference rooms.
    bool chkConferenceView = false;
    // Without those whose task is done.
    bool chkCompleted = false;
};

// The SQL text that selects the reservations of the task view: those that need the task of `ViewType` between the two
// dates of `DateRange1`, which must be there, narrowed by the two check boxes of the page and to assets whose name
// begins with the start-up argument.
QString TaskQuery(const TaskChoices& choices, const QString& startupArgument);

} // namespace velmora
