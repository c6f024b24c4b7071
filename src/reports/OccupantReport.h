#pragma once

#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora {

// Prints the occupants of the requested days: each location with the person there, telephone, organization and period,
// by location, onto the output target chosen before. With `nonPermanent` without permanent occupancies; with
// `includeUnreserved` also locations without a reservation. Only locations whose name begins with the start-up
// argument are listed when there is one.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Occupant Report".
void PrintOccupantReport(ReportContext& context, const OccupancyRequest& request);

} // namespace velmora
