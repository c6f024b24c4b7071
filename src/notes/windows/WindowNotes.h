#pragma once

#include "notes/windows/NotesContext.h"

class QWidget;

namespace velmora {

// Shows the notes of a reservation in front of `owner`, to be edited, until their window is closed or left. Where
// no categories are defined it says so and shows their list instead; the notes follow once there is one. Nothing is
// thrown.
void OpenNotes(const NotesContext& context, qint32 reservation, QWidget* owner);

} // namespace velmora
