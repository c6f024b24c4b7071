#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintJob.h"
#include "reports/Delivery.h"
#include "reports/ReportRun.h"
#include "reports/ReportView.h"

namespace velmora {

// What a report routine works with.
struct ReportContext {
    const Program& program;
    ReportRun& run;
    const Delivery& delivery;
    ReportView& view;
    engine::Database& database;
    print::PrintJob& job;
};

} // namespace velmora
