#include "engine/Repair.h"

#include "engine/salvage/FileExchange.h"
#include "engine/salvage/Salvager.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Store.h"

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
    const std::optional<sqlite::Presence> presence = sqlite::Presence::TryExclusive(path);
    return !presence || salvage::HasStoreLocks(resolved);
}

CheckResult CheckDatabase(const QString& path, const OpenOptions& options) {
    try {
        sqlite::CheckPath(path);
        const sqlite::Presence presence = sqlite::Presence::Join(path);
        const sqlite::Store store(sqlite::ResolvedPath(path), SQLITE_OPEN_READWRITE);
        sqlite3_busy_timeout(store.Handle(), options.busyMilliseconds);
        store.Execute("PRAGMA query_only = ON");
        sqlite::CheckOpened(store.Handle(), path, options);
        sqlite::CheckInFull(store.Handle());
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
