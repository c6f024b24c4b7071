#pragma once

#include "tasks/TaskChoices.h"

namespace velmora {

// The SQL text that selects the reservations of the task view: those that need the task of `ViewType` between the two
// dates of `DateRange1`, which must be there, narrowed by the two check boxes of the page and to assets whose name
// begins with the start-up argument.
QString TaskQuery(const TaskChoices& choices, const QString& startupArgument);

} // namespace velmora
