#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// Fills the current program's dictionary from "language.mdb" in the data directory, table Language, for the user's
// language: the code that "win.ini" names in section "Intl" under "sLanguage", else the first of the locale's codes
// that has rows ("de_DE", "de", "German"). Without the file, or without rows for the language, texts stay English; a
// file that cannot be read is noted in the log and changes nothing.
void LoadTranslations();

} // namespace velmora
