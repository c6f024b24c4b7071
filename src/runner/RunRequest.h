#pragma once

#include "print/PrintServices.h"
#include "reports/ReportContext.h"

namespace velmora::runner {

// Runs a report of any kind to the target of the context's delivery: through its job, but for a layout, which makes a
// document of its own with `services` and leaves the job alone. Failures are reported, not thrown.
void RunRequest(ReportContext& context, const print::PrintServices& services, const ReportRequest& request);

} // namespace velmora::runner
