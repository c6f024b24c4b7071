#pragma once

#include "app/report/CommandLine.h"
#include "app/report/OptionTable.h"

namespace velmora::report {

// Takes the report's name and all words behind it: the report's own options and those of `global`, in any order. Stores
// what they say. Throws BadUsage. When help is asked for, nothing needs to be
// complete.
void ParseReport(Words& words, const OptionTable& global, Command& command);

} // namespace velmora::report
