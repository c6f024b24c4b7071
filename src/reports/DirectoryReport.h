#pragma once

#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora {

// Prints the directory of the requested days: each person with location, telephone, organization and period, by name,
// onto the output target chosen before. With `nonPermanent` without permanent occupancies; with `includeUnreserved`
// also persons without a location. Only locations whose name begins with the start-up argument, blanks around it left
// out, are listed when there is one.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Directory Report".
void PrintDirectoryReport(ReportContext& context, const OccupancyRequest& request);

} // namespace velmora
