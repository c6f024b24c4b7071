#pragma once

#include "app/report/CommandLine.h"
#include "app/report/OptionTable.h"

namespace velmora::report {

// Takes the words behind "layout": the report, its days and its filters, as the layout page would have them. `global`
// are the options that every report has. Throws BadUsage.
void ParseLayout(Words& words, const OptionTable& global, Command& command);

// How the report is called, for people.
QString LayoutUsage();

} // namespace velmora::report
