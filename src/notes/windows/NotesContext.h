#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintJob.h"

namespace velmora {

// What the windows of the notes work with. All of it outlives them.
struct NotesContext {
    const Program& program;
    engine::Database& database;
    print::PrintJob& job;
};

} // namespace velmora
