#pragma once

#include "base/Program.h"
#include "notes/CellText.h"
#include "notes/RowRules.h"

namespace velmora {

class Steps;

// Stores and deletes the rows of a grid together with the person at the desk: asks what must be asked, tells what
// another desk did meanwhile, and reports failures under the window's name. Nothing is thrown.
class RowKeeper {
public:
    // All of it outlives the object.
    RowKeeper(const Program& program, BoundRows& rows, RowRules& rules, QString module);

    // Sees to it that no row is pending: it was stored, or given up by the person's own answer. False when it is still
    // pending, which the person was told.
    bool Store();
    // Stores the pending row if that needs no question; else gives it up, and the log keeps what was typed. For a
    // program that must end, whatever its user is doing.
    void StoreUnasked() noexcept;
    // The column of the pending row that the last Store found wanting; none when that was not the reason.
    std::optional<int> WantingColumn() const { return wanting_ ? std::optional(wanting_->column) : std::nullopt; }
    // What that column offers by now, where it is other than what was offered.
    std::optional<QStringList> NewChoices() const { return wanting_ ? wanting_->choices : std::nullopt; }

    // Deletes the rows in their order after a question that names their number. False when nothing was tried; else the
    // rows are to be read again.
    bool Delete(const std::vector<int>& rows);

    const CellText& Texts() const { return texts_; }

private:
    bool MayWrite(Steps& steps);
    // What Yes, No and Cancel do with a row that another desk changed or deleted: false when it stays pending as it is.
    bool SettleChange();
    bool SettleLoss();
    bool MayDelete(const std::vector<int>& rows);
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
    std::optional<RowRules::Refusal> wanting_;
};

} // namespace velmora
