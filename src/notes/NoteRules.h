#pragma once

#include "base/services/Clock.h"
#include "notes/BoundRows.h"

namespace velmora {

// The columns of the grid that shows a reservation's notes.
std::vector<BoundColumn> NoteColumns();

// The query of a reservation's notes.
QString NotesOf(qint32 reservation);

// Notes of a reservation: each has a category, and ticking Completed fills in when and by whom where that is empty.
class NoteRules : public RowRules {
public:
    // The clock outlives the object.
    NoteRules(const Clock& clock, QString userName) : clock_(clock), userName_(std::move(userName)) {}

    void FillIn(BoundRows& rows, int row, int column) override;
    std::optional<Refusal> Refuse(BoundRows& rows) override;

private:
    const Clock& clock_;
    QString userName_;
};

} // namespace velmora
