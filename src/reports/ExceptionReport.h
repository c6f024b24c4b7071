#pragma once

#include "reports/OccupancyTable.h"

namespace velmora {

OccupancyRows GatherExceptions(const ExceptionRequest& request, const ReportDays& days, const Gathering& gathering);

// Prints the exceptions of the requested day onto the output target chosen before:
//
// - Persons outside of their space type, first, second or third area: whoever's first reservation of the day is at a
//   location that does not have what is assigned to the person. A location that no longer exists is left out.
// - Reservations that are not checked in: those of locations, not permanent, that no move-in was marked for. The
//   start-up argument and the exclusion of conference rooms count for these.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Exception Report".
void PrintExceptionReport(ReportContext& context, const ExceptionRequest& request);

} // namespace velmora
