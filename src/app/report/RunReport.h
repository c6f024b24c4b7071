#pragma once

#include "app/report/CommandLine.h"

namespace velmora::report {

// Prints the report. Returns the program's exit code: 0 delivered; 1 failed, with the error report on standard error; 3
// a hold is placed or there is no database, with the notice on standard error.
int RunReport(const Command& command, const QString& executablePath);

} // namespace velmora::report
