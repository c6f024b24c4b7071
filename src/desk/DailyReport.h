#pragma once

#include "desk/ReportContext.h"

namespace velmora {

// Prints the list of reservations that start, end, or both on the report days: the variant and days that
// `state.ReportDayMode` names, with the options of the daily page as they are when the report starts, onto the output
// target chosen before. Only assets whose name begins with the start-up argument are listed when there is one.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Daily Report".
void PrintDailyReport(ReportContext& context);

} // namespace velmora
