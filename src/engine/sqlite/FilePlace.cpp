#include "engine/sqlite/FilePlace.h"

#include "engine/records/SessionDatabase.h"
#include "engine/sqlite/FileStore.h"
#include "engine/sqlite/NewDatabaseFile.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"

#include <QFileInfo>

#include <unistd.h>

namespace velmora::engine::sqlite {

bool FilePlace::Exists() const {
    return QFileInfo(path_).isFile();
}

std::unique_ptr<Database> FilePlace::Open(const OpenOptions& options) const {
    return std::make_unique<records::SessionDatabase>(path_, std::make_unique<FileStore>(path_, options));
}

std::unique_ptr<NewDatabase> FilePlace::Create(const Schema& schema) const {
    return std::make_unique<NewDatabaseFile>(path_, schema);
}

bool FilePlace::IsInUse() const {
    const QByteArray resolved = ResolvedPath(path_);
    if (::access(resolved.constData(), F_OK) != 0) {
        return false;
    }
    const QByteArray folder = resolved.left(resolved.lastIndexOf('/') + 1);
    if (::access(resolved.constData(), R_OK | W_OK) != 0 ||
        ::access(folder.isEmpty() ? "." : folder.constData(), W_OK | X_OK) != 0) {
        throw EngineError(
            EngineErrorNumber::CannotOpen,
            QStringLiteral("\"%1\" cannot be repaired: this user may not change the file or its folder.").arg(path_));
    }
    const std::optional<Presence> presence = Presence::TryExclusive(path_);
    return !presence || HasStoreLocks(resolved);
}

namespace {

// A full check takes long enough to be in the way of everyone who writes; copying the file takes a fraction of that,
// and reads a share from the beginning to the end instead of here and there. The copy is a temporary database that goes
// with its connection, however this program ends.
void CheckCopyInFull(sqlite3* connection) {
    const Connection copy({}, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_backup* const backup = sqlite3_backup_init(copy.Handle(), "main", connection, "main");
    constexpr int allPages = -1;
    const int stepped = sqlite3_backup_step(backup, allPages);
    const int finished = sqlite3_backup_finish(backup);
    if (stepped != SQLITE_DONE || finished != SQLITE_OK) {
        ThrowStoreError(copy.Handle(), stepped != SQLITE_DONE ? stepped : finished, {});
    }
    CheckInFull(copy.Handle());
}

} // namespace

CheckResult FilePlace::Check(const OpenOptions& options) const {
    try {
        CheckPath(path_);
        const Presence presence = Presence::Join(path_);
        Connection store(ResolvedPath(path_), SQLITE_OPEN_READWRITE);
        sqlite3_busy_timeout(store.Handle(), options.busyMilliseconds);
        store.Execute("PRAGMA query_only = ON");
        CheckOpened(store.Handle(), path_, options);
        try {
            CheckCopyInFull(store.Handle());
        } catch (const EngineError& error) {
            if (error.Kind() != EngineErrorNumber::DiskFull) {
                throw;
            }
            CheckInFull(store.Handle());
        }
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::Damaged) {
            throw;
        }
        return {false, error.Description()};
    }
    return {};
}

} // namespace velmora::engine::sqlite
