#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "reports/Requests.h"
#include "runner/ReportPrinters.h"

namespace velmora::runner {

// Runs a report that nobody watches, to where `delivery` says; `printers` are those of the program. Failures are
// reported as at a desk. False when nothing was delivered.
bool RunUnattended(const Program& program, engine::Database& database, ReportPrinters& printers,
                   const Delivery& delivery, const ReportRequest& request);

} // namespace velmora::runner
