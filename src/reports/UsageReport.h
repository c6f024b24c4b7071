#pragma once

#include "desk/ReportContext.h"

namespace velmora {

// Prints how the locations (`state.OptUsage` 0, also when none is chosen) or the persons by first, second or third area
// (1 to 3) are used on `state.dtcUsage`: how many are unreserved, permanently reserved or reserved for a limited time,
// in groups of three levels; with `state.chkUsageDetail` also which. Onto the output target chosen before.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Usage Report".
void PrintUsageReport(ReportContext& context);

} // namespace velmora
