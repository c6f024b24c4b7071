#include "engine/sqlite/FileBuilder.h"

#include "engine/sqlite/FileHandle.h"

#include <unistd.h>

namespace velmora::engine::sqlite {

namespace {

// Nobody reads the file before it is finished and synced, so syncs on the way are of no use. A journal in memory undoes
// a statement that fails; it stays small because new pages need no undoing. The large cache (in KiB) also lets indexes
// be sorted in memory.
constexpr char settings[] = "PRAGMA page_size = 4096; PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;"
                            "PRAGMA locking_mode = EXCLUSIVE; PRAGMA cache_size = -262144; PRAGMA temp_store = MEMORY;"
                            "PRAGMA foreign_keys = OFF; BEGIN EXCLUSIVE";

} // namespace

FileBuilder::FileBuilder(QByteArray path)
    : path_(std::move(path)), store_(path_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) {
    try {
        store_.Execute(settings);
    } catch (...) {
        ::unlink(path_.constData());
        throw;
    }
}

FileBuilder::~FileBuilder() {
    if (!path_.isEmpty()) {
        ::unlink(path_.constData());
    }
}

void FileBuilder::Run(const std::vector<QByteArray>& statements) const {
    for (const QByteArray& statement : statements) {
        store_.Execute(statement);
    }
}

void FileBuilder::Close() {
    store_.Close();
    SyncFile(path_);
}

} // namespace velmora::engine::sqlite
