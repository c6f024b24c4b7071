#pragma once

#include "notes/BoundRows.h"
#include "notes/windows/GridForm.h"

class QLabel;

namespace velmora {

// The standard notes of an asset or of an event type to choose from. OK adds the chosen ones to the reservation's
// notes, in the order of selection: all of them or none.
class frmSelectStdNotes : public GridForm {
    Q_OBJECT

public:
    frmSelectStdNotes(const NotesContext& context, qint32 reservationId, QWidget* parent = nullptr);

    // "1" the standards of an asset, "2" of an event type. Set both before the window is shown.
    QString StdNoteMode;
    // The number of the asset, or the event type.
    QString StdNoteKey;

    void reject() override { cmdCancel_Click(); }

protected:
    bool Form_Activate() override;
    BoundGrid& Grid() override { return *Table1; }

private:
    void Explain();
    void cmdOK_Click();
    void cmdCancel_Click();
    void AddChosen();
    // The names of the selected standard notes, in the order of selection.
    QStringList ChosenNames();

    const qint32 reservation_;
    RowRules rules_;
    QLabel* Label1;
    BoundGrid* Table1;
};

} // namespace velmora
