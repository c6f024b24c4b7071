#include "engine/sqlite/FileBuilder.h"

#include "engine/sqlite/FileHandle.h"

#include <unistd.h>

namespace velmora::engine::sqlite {

namespace {

// Nobody reads the file before it is finished and synced, so syncs on the way are of no use. A journal in memory undoes
// a statement that fails; it stays small because new pages need no undoing.
constexpr char settings[] = "PRAGMA page_size = 4096; PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF;"
                            "PRAGMA locking_mode = EXCLUSIVE; PRAGMA foreign_keys = OFF; PRAGMA temp_store = FILE;"
                            "PRAGMA cache_size = -262144; BEGIN EXCLUSIVE";

// Rows come in any order of their keys, so their pages stay in memory. An index is sorted in portions of the size of
// the cache and then written from its beginning to its end: portions that fit the processor's own cache take a third of
// the time of large ones. (Sizes in KiB.)
constexpr char cacheForSorting[] = "PRAGMA cache_size = -1000";
constexpr char cacheForRows[] = "PRAGMA cache_size = -262144";

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

void FileBuilder::Run(const std::vector<QByteArray>& statements) {
    for (const QByteArray& statement : statements) {
        store_.Execute(statement);
    }
}

void FileBuilder::MakeIndexes(const std::vector<QByteArray>& statements) {
    store_.Execute(cacheForSorting);
    Run(statements);
    store_.Execute(cacheForRows);
}

void FileBuilder::Close() {
    store_.Close();
    SyncFile(path_);
}

} // namespace velmora::engine::sqlite
