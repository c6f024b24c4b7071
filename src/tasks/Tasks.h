#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "tasks/TaskQuery.h"
#include "tasks/TaskView.h"

#include <QHash>

#include <memory>

namespace velmora {

// The task view's logic: selects the reservations that need a task, steps through them, and stores ticks at once.
//
// Every reservation is read anew when it is moved onto, so it shows what the database holds by then; the notice says
// what another desk changed since it was shown last. Failures and refusals are reported by a message; nothing is
// thrown.
class Tasks {
public:
    Tasks(const Program& program, const TaskChoices& choices, engine::Database& database, TaskView& view)
        : program_(program), choices_(choices), database_(database), view_(view) {}

    // Selects by the choices of the page and shows the first reservation, or hides the view.
    void ShowTasks();

    // Moves and shows; without effect where there is none in that direction.
    void First();
    void Previous();
    void Next();
    void Last();

    // Shows the reservation that the selection stands on, as the database holds it now.
    void DisplayEvent();

    // Stores that the task of the reservation shown is done, or open again: that one field, at once. A tick that
    // another desk made meanwhile counts as made. One that cannot be stored is shown as it was before, after the error
    // report (module "Service Administration", procedure "Store Task") or the message said why.
    void StoreTick(TaskKind task, bool done);

    // Looks whether another desk changed or deleted the reservation shown, and shows it anew only then. Costs one
    // look-up by key; for a timer and for coming back to the page. Failures are left for the next call that matters.
    void Refresh();

    // The number of the reservation shown; none when none is shown or it is gone from the database.
    std::optional<qint32> ShownReservation() const;

    // Closes the selection and hides the view.
    void Close();

private:
    enum class Outcome { Stored, MadeByAnother, Deleted };

    // Does the work; when it fails, hides the view and shows `failure` with the reason.
    template <typename Function>
    bool Do(const QString& failure, Function&& work);
    void ShowMessage(const QString& text) const;
    void Select();
    void StepTo(qint64 position);
    // Reads what the database holds of the current record, and says in the notice what differs from what was shown of
    // it last.
    void Read();
    // Finds a reservation that another desk moved to another asset, which makes it another record of the join. False
    // when it was deleted, or was never shown and so is not known by its number.
    bool FindMoved();
    engine::Recordset& Record() { return moved_ != nullptr ? *moved_ : *TaskRecordset_; }
    void Show();
    void Hide(const QString& text);
    Outcome WriteTick(TaskKind task, bool done);
    void ShowAfterTick();

    const Program& program_;
    const TaskChoices& choices_;
    engine::Database& database_;
    TaskView& view_;

    // Over assets and reservations; stands on the reservation shown. None before the first selection.
    std::unique_ptr<engine::Recordset> TaskRecordset_;
    // The reservation shown, alone, after another desk moved it to another asset.
    std::unique_ptr<engine::Recordset> moved_;
    // From 0.
    qint64 position_ = 0;
    qint64 count_ = 0;
    // What the selection was made for; the page's option may have moved on since.
    TaskKind selectedFor_ = TaskKind::MoveIn;
    ShownTask shown_;
    bool visible_ = false;
    // The reservation shown is no longer in the database.
    bool gone_ = false;
    // What was shown last of each reservation seen, by its place in the selection.
    QHash<qint64, TaskDetails> seen_;
};

} // namespace velmora
