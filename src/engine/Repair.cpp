#include "engine/Repair.h"

#include "engine/salvage/FileExchange.h"
#include "engine/salvage/Salvager.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"
#include "engine/sqlite/StoreError.h"

#include <QFile>

#include <algorithm>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine {

bool IsInUse(const QString& path) {
    const QByteArray resolved = sqlite::ResolvedPath(path);
    if (::access(resolved.constData(), F_OK) != 0) {
        return false;
    }
    const QByteArray folder = resolved.left(resolved.lastIndexOf('/') + 1);
    if (::access(resolved.constData(), R_OK | W_OK) != 0 ||
        ::access(folder.isEmpty() ? "." : folder.constData(), W_OK | X_OK) != 0) {
        throw EngineError(
            EngineErrorNumber::CannotOpen,
            QStringLiteral("\"%1\" cannot be repaired: this user may not change the file or its folder.").arg(path));
    }
    const std::optional<sqlite::Presence> presence = sqlite::Presence::TryExclusive(path);
    return !presence || salvage::HasStoreLocks(resolved);
}

namespace {

// A full check takes long enough to be in the way of everyone who writes; copying the file takes a fraction of that,
// and reads a share from the beginning to the end instead of here and there. The copy is a temporary database that goes
// with its connection, however this program ends.
void CheckCopyInFull(sqlite3* connection) {
    const sqlite::Connection copy({}, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_backup* const backup = sqlite3_backup_init(copy.Handle(), "main", connection, "main");
    constexpr int allPages = -1;
    const int stepped = sqlite3_backup_step(backup, allPages);
    const int finished = sqlite3_backup_finish(backup);
    if (stepped != SQLITE_DONE || finished != SQLITE_OK) {
        sqlite::ThrowStoreError(copy.Handle(), stepped != SQLITE_DONE ? stepped : finished, {});
    }
    sqlite::CheckInFull(copy.Handle());
}

} // namespace

CheckResult CheckDatabase(const QString& path, const OpenOptions& options) {
    try {
        sqlite::CheckPath(path);
        const sqlite::Presence presence = sqlite::Presence::Join(path);
        const sqlite::Connection store(sqlite::ResolvedPath(path), SQLITE_OPEN_READWRITE);
        sqlite3_busy_timeout(store.Handle(), options.busyMilliseconds);
        store.Execute("PRAGMA query_only = ON");
        sqlite::CheckOpened(store.Handle(), path, options);
        try {
            CheckCopyInFull(store.Handle());
        } catch (const EngineError& error) {
            if (error.Kind() != EngineErrorNumber::DiskFull) {
                throw;
            }
            sqlite::CheckInFull(store.Handle());
        }
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::Damaged) {
            throw;
        }
        return {false, error.Description()};
    }
    return {};
}

RepairReport RepairDatabase(const QString& path, const QString& schemaSql, DateTime now) {
    try {
        sqlite::CheckPath(path);
        salvage::FileExchange exchange(path);
        salvage::Salvager salvager(exchange.Source(), exchange.NewPath(), schemaSql);
        RepairReport report = salvager.Run();
        report.keptAs = QFile::decodeName(exchange.Replace(now));
        salvager.File().Release();
        return report;
    } catch (const EngineError& error) {
        if (error.Kind() != EngineErrorNumber::Damaged) {
            throw;
        }
        throw EngineError(EngineErrorNumber::Damaged,
                          u"\"%1\" could not be repaired: %2"_s.arg(path, error.Description()));
    }
}

bool RepairReport::LostNothing() const {
    return std::all_of(tables.begin(), tables.end(), [](const TableRepair& table) { return table.LostNothing(); });
}

QString RepairReport::ToText() const {
    QStringList lines;
    for (const TableRepair& table : tables) {
        QString line = u"%1: %2 rows saved, %3%4 lost."_s.arg(table.table)
                           .arg(table.rowsSaved)
                           .arg(table.mayHaveLostMore ? u"at least "_s : QString())
                           .arg(table.rowsLost);
        for (const QString& remark : table.remarks) {
            line += u' ' + remark;
        }
        lines.append(line);
    }
    lines += remarks;
    if (!keptAs.isEmpty()) {
        lines.append(u"The damaged file is kept as \"%1\"."_s.arg(keptAs));
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace velmora::engine
