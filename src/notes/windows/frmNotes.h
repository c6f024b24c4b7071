#pragma once

#include "notes/NoteRules.h"
#include "notes/windows/GridForm.h"

namespace velmora {

// The notes of one reservation in an editable grid. It closes when another window is gone to, and stores what is typed
// first.
class frmNotes : public GridForm {
    Q_OBJECT

public:
    // The reservation's ID; its notes are shown from ShowModal on. `userName` signs completed notes.
    frmNotes(const NotesContext& context, qint32 reservationId, const QString& userName, QWidget* parent = nullptr);

    const qint32 ReservationID;

    // It closed because no categories are defined; a message has said so.
    bool LackedCategories() const { return lackedCategories_; }

protected:
    bool Form_Activate() override;
    void Form_LostFocus() override;
    BoundGrid& Grid() override { return *TDBGrid1; }

private:
    void LayOut();
    void RefuseWithoutCategories();
    void cmdAssetStdNotes_Click() { SelectStandardNotes(QStringLiteral("1")); }
    void cmdEventStdNotes_Click() { SelectStandardNotes(QStringLiteral("2")); }
    void Command1_Click();
    void SelectStandardNotes(const QString& mode);

    NoteRules rules_;
    bool lackedCategories_ = false;
    BoundGrid* TDBGrid1;
};

// Shows the notes of a reservation in front of `owner`, to be edited, until their window is closed or left. Where
// no categories are defined it says so and shows their list instead; the notes follow once there is one. Nothing is
// thrown.
void OpenNotes(const NotesContext& context, qint32 reservation, QWidget* owner);

} // namespace velmora
