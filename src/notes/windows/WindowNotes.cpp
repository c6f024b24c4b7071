#include "notes/windows/WindowNotes.h"

#include "notes/windows/frmNoteCategory.h"
#include "notes/windows/frmNotes.h"
#include "platform/UserName.h"

namespace velmora {

void OpenNotes(const NotesContext& context, qint32 reservation, QWidget* owner) {
    for (;;) {
        frmNotes notes(context, reservation, UserName(), owner);
        notes.ShowModal();
        if (!notes.LackedCategories()) {
            return;
        }
        // Where there are none, this is the way to the first.
        frmNoteCategory categories(context, owner);
        categories.ShowModal();
        if (categories.IsEmpty()) {
            return;
        }
    }
}

} // namespace velmora
