#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// What every program does first: a standard stream that the caller closed is taken up, so that no file
// opened later becomes it, and a reader that goes away or a file that may not grow is a failed write like any other.
void PrepareStandardStreams();

// The words behind the program's name.
QStringList ArgumentTexts(int argc, char** argv);

// Writes to standard error. A failure to do so is passed over: there is nobody left to report it to.
void WriteStandardError(const QString& text);

} // namespace velmora
