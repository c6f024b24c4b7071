#include "engine/salvage/RepairFile.h"

#include "engine/salvage/FileExchange.h"
#include "engine/salvage/Salvager.h"
#include "engine/sqlite/Soundness.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

RepairReport RepairFile(const QString& path, const Schema& schema, DateTime now) {
    try {
        sqlite::CheckPath(path);
        FileExchange exchange(path);
        Salvager salvager(exchange.Source(), exchange.NewPath(), schema);
        RepairReport report = salvager.Run();
        if (!schema.tables.empty()) {
            sqlite::SchemaVersion(salvager.File().Handle(), path, schema);
        }
        salvager.File().Close();
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

} // namespace velmora::engine::salvage
