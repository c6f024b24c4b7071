#include "engine/Database.h"
#include "engine/sqlite/SqliteDatabase.h"

namespace velmora::engine {

// A second store has its entry here: its databases are known by how their places are written.
std::unique_ptr<Database> Database::Open(const QString& path, const OpenOptions& options) {
    return std::make_unique<sqlite::SqliteDatabase>(path, options);
}

} // namespace velmora::engine
