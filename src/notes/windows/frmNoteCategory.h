#pragma once

#include "notes/NoteCategories.h"
#include "notes/windows/GridForm.h"

namespace velmora {

// The categories of notes in an editable list.
class frmNoteCategory : public GridForm {
    Q_OBJECT

public:
    explicit frmNoteCategory(const NotesContext& context, QWidget* parent = nullptr);

    // No category is in its list.
    bool IsEmpty() const;

protected:
    bool Form_Activate() override;
    void Form_LostFocus() override;
    BoundGrid& Grid() override { return *Table1; }

private:
    CategoryRules rules_;
    BoundGrid* Table1;
};

} // namespace velmora
