#pragma once

#include "app/db/CommandLine.h"
#include "base/services/Clock.h"

namespace velmora::db {

enum class ExitCode {
    Done = 0, // or sound
    Failed = 1,
    BadUsage = 2,
    Damaged = 3,
    InUse = 4,
    NotRepaired = 5,
    NoDatabase = 6,
};

// Does what the command line asks for. Results go to standard output, the reason of a failure to standard error.
ExitCode Run(const CommandLine& line, const Clock& clock);

} // namespace velmora::db
