#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "layouts/ReportControl.h"
#include "reports/ReportContext.h"

namespace velmora::layouts {

// Runs a layout: hands the formula and the layout file of the data directory to `report`, brings the dates' texts in
// the database up to date and starts it. Says so when no layout was chosen. A report that is printed at the same time,
// as `run` says, goes on undisturbed.
//
// Failures are reported with module "Service Administration" and procedure "Run Crystal Report".
void RunCrystalReport(const Program& program, const LayoutRequest& request, const ReportRun& run,
                      engine::Database& database, ReportControl& report);

} // namespace velmora::layouts
