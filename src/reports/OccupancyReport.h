#pragma once

#include "reports/OccupancyTable.h"

namespace velmora {

// Over the days up to the first moment of `end`: by location, and by person.
OccupancyRows GatherOccupants(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering);
OccupancyRows GatherDirectory(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering);

// Print the occupants or the directory of the requested days onto the output target chosen before: each location with
// the person there, telephone, organization and period, by location; or each person with them, by name.
//
// Only locations whose name begins with the start-up argument are listed when there is one; the directory takes it
// without the blanks around it.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Occupant Report" or "Print Directory Report".
void PrintOccupantReport(ReportContext& context, const OccupancyRequest& request);
void PrintDirectoryReport(ReportContext& context, const OccupancyRequest& request);

} // namespace velmora
