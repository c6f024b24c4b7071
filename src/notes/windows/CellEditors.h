#pragma once

#include "base/services/Clock.h"
#include "notes/CellText.h"

class QFrame;
class QWidget;

namespace velmora {

// The editor for a kind of cells: a line, a sheet for texts of several lines, a ChoiceBox or a DateBox. Texts and
// clock outlive it.
QWidget* MakeCellEditor(CellKind kind, const CellText& texts, const Clock& clock, const QStringList& choices,
                        QWidget* parent);

QString EditorText(const QWidget& editor);
// As if it had been typed: lines become words behind each other where the editor has only one. The cursor stands
// behind it.
void SetEditorText(QWidget& editor, const QString& text);
void SelectEditorText(QWidget& editor);
// The cursor behind the text, nothing selected.
void DeselectEditorText(QWidget& editor);
// Shows the list or the calendar of an editor that has one.
void OpenEditorList(QWidget& editor);

// A frame that is seen on a dark grid too, which the style's own is not.
void FrameInHighlight(QFrame& area);

} // namespace velmora
