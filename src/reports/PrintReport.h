#pragma once

#include "reports/ReportContext.h"

namespace velmora {

// Prints the requested report. A layout, which is not written through a print job, is passed over.
void PrintReport(ReportContext& context, const ReportRequest& request);

} // namespace velmora
