#pragma once

#include "app/report/CommandLine.h"
#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintServices.h"

namespace velmora::report {

// Prints the layout's file name, a TAB and the selection formula on standard output. Needs no program and no database.
// Returns false when standard output did not take it.
bool ShowFormula(const Command& command);

// Runs the layout into the target that the command line names. Failures are reported as at a desk.
void RunLayout(const Command& command, const Program& program, engine::Database& database,
               const print::PrintServices& services);

} // namespace velmora::report
