#pragma once

#include "base/LocaleText.h"
#include "engine/Recordset.h"
#include "tasks/TaskKind.h"

#include <QStringList>

#include <optional>

namespace velmora {

// What the task view shows of one reservation, by the names of its controls. What is missing is an empty text.
struct TaskDetails {
    // The name of the reservation, the caption of the frame.
    QString frEvent;
    QString lblLastName;
    QString lblFirstName;
    QString lblAsset;
    QString lblAssetName;
    QString lblAttendees;
    // The whole period in one line.
    QString lblEnd;
    QString lblEvent;
    QString lblOrganization;
    QString lblID;
    // The check boxes, by TaskKind.
    std::array<bool, allTasks.size()> done{};

    // Reads the current record of a set over assets and reservations.
    static TaskDetails Read(const engine::Recordset& rows, const LocaleText& locale);

    bool& Done(TaskKind task) { return done[static_cast<size_t>(task)]; }
    bool Done(TaskKind task) const { return done[static_cast<size_t>(task)]; }
    // The captions, in English, of what differs in `other`.
    QStringList Differences(const TaskDetails& other) const;

    friend bool operator==(const TaskDetails&, const TaskDetails&) = default;
};

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
    // Hides the frame; `text` says why there is nothing to show, empty when a message has said so.
    virtual void HideTask(const QString& text) = 0;
};

} // namespace velmora
