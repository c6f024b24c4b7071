#pragma once

#include "engine/Database.h"

#include <memory>

namespace velmora {

// The one open database of the program.
struct SharedDatabase {
    std::unique_ptr<engine::Database> database;
};

// The current program's open database; throws Error when none is open.
engine::Database& OpenedDatabase();

// Opens the configured site's database and keeps it. A damaged file is repaired on request when nobody else has it
// open; without a repair, and after any other failure that the person does not retry, the program ends.
void OpenSharedDatabase();

} // namespace velmora
