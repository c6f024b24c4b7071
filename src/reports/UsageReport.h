#pragma once

#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora {

// Prints how the locations, or the persons by first, second or third area, are used on the requested day: how many are
// unreserved, permanently reserved or reserved for a limited time, in groups of three levels; with detail also which.
// Onto the output target chosen before.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Usage Report".
void PrintUsageReport(ReportContext& context, const UsageRequest& request);

} // namespace velmora
