#include "ops/SharedDatabase.h"

#include "base/Program.h"

namespace velmora {

engine::Database& OpenedDatabase() {
    const auto& shared = CurrentProgram().Part<SharedDatabase>();
    if (shared.database == nullptr) {
        throw ProgramError(ErrorNumber::InvalidCall, QStringLiteral("The database is not open"));
    }
    return *shared.database;
}

} // namespace velmora
