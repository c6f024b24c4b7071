#pragma once

#include "notes/BoundRows.h"

#include <QStringList>

namespace velmora {

// What one kind of rows adds to how every grid edits: a plain grid has none of it.
class RowRules {
public:
    virtual ~RowRules() = default;

    // Fills in the fields that depend on a value that was just entered.
    virtual void FillIn(BoundRows&, int /*row*/, int /*column*/) {}

    struct Refusal {
        // What is missing and what to do.
        QString reason;
        // Where it is to be entered.
        int column = 0;
        // What that column offers by now, where it turned out to be other than what was offered.
        std::optional<QStringList> choices;
    };
    // Why the pending row cannot be stored. May throw.
    virtual std::optional<Refusal> Refuse(BoundRows&) { return std::nullopt; }

    // A question to be answered with Yes before the pending row is written, or the rows are deleted; empty without one.
    virtual QString QuestionBeforeWriting(BoundRows&) { return {}; }
    virtual QString QuestionBeforeDeleting(BoundRows&, const std::vector<int>& /*rows*/) { return {}; }

    // Writes the pending row and what must change together with it.
    virtual BoundRows::Outcome Write(BoundRows& rows) { return rows.Write(); }
};

} // namespace velmora
