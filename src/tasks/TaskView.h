#pragma once

#include "tasks/TaskDetails.h"

#include <optional>

namespace velmora {

// What the task view shows besides the reservation itself.
struct ShownTask {
    TaskDetails details;
    // From 1, and of how many; `place` is the two in words: "3 of 41".
    int position = 0;
    int count = 0;
    QString place;
    // There are reservations before (first, previous) and behind (next, last) the one shown.
    bool hasPrevious = false;
    bool hasNext = false;
    // The one check box that may be ticked; none when the reservation is gone from the database.
    std::optional<TaskKind> tickable;
    // Says that another desk changed or deleted the reservation; empty otherwise.
    QString notice;
};

// The part of the main window in which one reservation is shown and its tasks are ticked.
class TaskView {
public:
    virtual ~TaskView() = default;
    // Shows the frame with the reservation, or replaces what it shows. Setting the check boxes runs no handler.
    virtual void ShowTask(const ShownTask& task) = 0;
    // Hides the frame; `text` says why there is nothing to show, empty when the person was told already.
    virtual void HideTask(const QString& text) = 0;
};

} // namespace velmora
