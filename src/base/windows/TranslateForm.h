#pragma once

class QWidget;

namespace velmora {

// Passes the window's caption and the captions of all it contains through Translate, in place: labels, buttons, check
// boxes, option buttons, frames, menu entries, tabs and toolbar buttons with their tool tips, and the accessible name
// of a grid. Texts that a person entered, and lists, stay as they are. A caption is looked up as it is written and,
// without an entry, a second time without its mnemonic mark. Never fails.
void TranslateForm(QWidget& window);

} // namespace velmora
