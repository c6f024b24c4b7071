#pragma once

#include "base/Program.h"
#include "desk/DeskState.h"
#include "desk/ReportView.h"
#include "engine/Database.h"
#include "print/PrintJob.h"

namespace velmora {

// What a report routine works with.
struct ReportContext {
    const Program& program;
    DeskState& state;
    ReportView& view;
    engine::Database& database;
    print::PrintJob& job;
};

} // namespace velmora
