#pragma once

#include "desk/ReportContext.h"

namespace velmora {

// Prints the occupants of the report days: each location with the person there, telephone, organization and period, by
// location, onto the output target chosen before. With `state.chkNonPermanent` without permanent occupancies; with
// `state.chkIncludeEmpty` also locations without a reservation. Only locations whose name begins with the start-up
// argument are listed when there is one.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Occupant Report".
void PrintOccupantReport(ReportContext& context);

} // namespace velmora
