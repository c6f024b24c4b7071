#include "engine/Database.h"
#include "engine/records/SessionDatabase.h"
#include "engine/sqlite/FileStore.h"

namespace velmora::engine {

// A second store has its entry here: its databases are known by how their places are written.
std::unique_ptr<Database> Database::Open(const QString& path, const OpenOptions& options) {
    return std::make_unique<records::SessionDatabase>(path, std::make_unique<sqlite::FileStore>(path, options));
}

} // namespace velmora::engine
