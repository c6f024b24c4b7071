#pragma once

#include "base/Program.h"
#include "engine/Database.h"

#include <memory>

namespace velmora {

// The one open database of the program.
struct SharedDatabase {
    std::unique_ptr<engine::Database> database;
};

// The current program's open database; throws Error when none is open.
inline engine::Database& OpenedDatabase() {
    const auto& shared = CurrentProgram().Part<SharedDatabase>();
    if (shared.database == nullptr) {
        throw ProgramError(ErrorNumber::InvalidCall, QStringLiteral("The database is not open"));
    }
    return *shared.database;
}

// Opens the configured site's database and keeps it. A damaged file is repaired on request when nobody else has it
// open; without a repair, and after any other failure that the person does not retry, the program ends.
void OpenSharedDatabase();

} // namespace velmora
