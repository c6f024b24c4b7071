#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintServices.h"
#include "reports/ReportContext.h"
#include "reports/Requests.h"

#include <functional>

namespace velmora::layouts {

// Where a layout goes. An orientation counts in place of the layout's own.
struct LayoutTarget {
    print::Target target = print::Target::Preview;
    std::optional<Orientation> orientation = {};
};

// Runs a layout file, given by its full path, for the records that the formula selects, and delivers the document.
// Throws Error.
//
// Each run writes a document of its own: reports that the program prints at the same time, their settings and their
// print job are left alone. Pages are of the current printer's paper, in the orientation of the layout whatever the
// printer's is set to.
void RunLayout(const print::PrintServices& services, engine::Database& database, const LayoutTarget& target,
               const QString& path, const QString& formula);

// Runs a layout of the program: brings the dates' texts in the database up to date and hands the path of the layout
// file in the data directory and the selection formula to `runLayout`. Says so when no layout was chosen. A report that
// is printed at the same time, as `run` says, goes on undisturbed.
//
// Failures are reported with module "Service Administration" and procedure "Run Crystal Report".
void RunCrystalReport(const Program& program, const LayoutRequest& request, const ReportRun& run,
                      engine::Database& database,
                      const std::function<void(const QString& path, const QString& formula)>& runLayout);

} // namespace velmora::layouts
