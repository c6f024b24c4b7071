#pragma once

#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora {

// Prints the list of reservations that start, end, or both on the requested days onto the output target chosen
// before.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Daily Report".
void PrintDailyReport(ReportContext& context, const DailyRequest& request);

} // namespace velmora
