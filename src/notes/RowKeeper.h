#pragma once

#include "base/Program.h"
#include "notes/BoundRows.h"
#include "notes/CellText.h"

namespace velmora {

class Steps;

// Stores and deletes the rows of a grid with the questions and messages that belong to it: a rule that is not met, what
// another desk changed meanwhile, an error (reported under the window's name). Nothing is thrown.
class RowKeeper {
public:
    // All of it outlives the object.
    RowKeeper(const Program& program, BoundRows& rows, RowRules& rules, QString module);

    // Stores the pending row, if there is one. True when none is pending any more: it was stored, or the user gave it
    // up. False when it still is, after a message that said why.
    bool Store();
    // Stores the pending row if that needs no question; else gives it up, and the log keeps what was typed. For a
    // program that must end, whatever its user is doing.
    void StoreUnasked() noexcept;
    // The column that a rule refused in the last Store; none when that was not the reason.
    std::optional<int> MissingColumn() const { return refusal_ ? std::optional(refusal_->column) : std::nullopt; }
    // What that column offers by now, where it is other than what was offered.
    std::optional<QStringList> NewChoices() const { return refusal_ ? refusal_->choices : std::nullopt; }

    // Deletes the rows in their order after a question that names their number. False when nothing was tried; else the
    // rows are to be read again.
    bool Delete(const QList<int>& rows);

    const CellText& Texts() const { return texts_; }

private:
    bool MayWrite(Steps& steps);
    bool SettleOutcome(BoundRows::Outcome outcome);
    // Asks what becomes of a row that another desk changed or deleted: Yes does `accept`, No gives the edit up, and
    // Cancel leaves it pending: false.
    bool Settle(const QString& question, void (BoundRows::*accept)());
    bool MayDelete(const QList<int>& rows);
    bool DeleteRow(Steps& steps, int row);
    QString MyVersion() const;
    QString BothVersions() const;
    QString Shown(const Value& value, int column) const;
    QString Excerpt(const Value& value, int column) const;
    Answer Ask(const QString& text, Buttons buttons, Icon icon) const;

    const Program& program_;
    BoundRows& rows_;
    RowRules& rules_;
    QString module_;
    CellText texts_;
    std::optional<RowRules::Refusal> refusal_;
};

} // namespace velmora
