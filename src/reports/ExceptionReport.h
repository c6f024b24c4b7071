#pragma once

#include "desk/ReportContext.h"

namespace velmora {

// Prints the exceptions of one day, `state.dtcException`, of the kind `state.optException` (0 when none is chosen) onto
// the output target chosen before:
//
// - 0 to 3, persons outside of their space type, first, second or third area: whoever's first reservation of the day is
//   at a location that does not have what is assigned to the person. A location that no longer exists is left out.
// - 4, reservations that are not checked in: those of locations, not permanent, that no move-in was marked for. Only
//   locations whose name begins with the start-up argument are listed, without conference rooms when
//   `state.chkConferenceDaily` is set.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Exception Report".
void PrintExceptionReport(ReportContext& context);

} // namespace velmora
