#pragma once

#include "base/Program.h"
#include "desk/DeskState.h"
#include "engine/Database.h"
#include "layouts/ReportControl.h"

namespace velmora::layouts {

// Runs the layout that was chosen last on the layout page, for the dates and filters of the page: hands the formula and
// the layout file of the data directory to `report`, brings the dates' texts in the database up to date and starts it.
// Says so when no layout was chosen. A report that the desk prints at the same time goes on undisturbed.
//
// Failures are reported with module "Service Administration" and procedure "Run Crystal Report".
void RunCrystalReport(const Program& program, const DeskState& state, engine::Database& database,
                      ReportControl& report);

} // namespace velmora::layouts
