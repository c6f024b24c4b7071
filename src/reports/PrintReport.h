#pragma once

#include "reports/ReportContext.h"
#include "reports/Requests.h"

namespace velmora {

// Prints the requested report. False for a layout, which is not written through a print job; nothing was done then.
bool PrintReport(ReportContext& context, const ReportRequest& request);

} // namespace velmora
