#pragma once

#include <QString>

namespace velmora {

// What every program without windows does first: a standard stream that the caller closed is taken up, so that no file
// opened later becomes it, and a reader that goes away is a failed write like any other.
void PrepareStandardStreams();

// Writes to standard error, where a failure can no longer be told to anybody.
void WriteStandardError(const QString& text);

} // namespace velmora
