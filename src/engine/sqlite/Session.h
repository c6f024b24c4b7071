#pragma once

#include "engine/sqlite/Connection.h"
#include "engine/sqlite/QueryInput.h"
#include "engine/sqlite/SchemaCatalog.h"
#include "engine/sqlite/StatementCache.h"

#include <memory>
#include <utility>
#include <vector>

namespace velmora::engine::sqlite {

// One open database with all that its recordsets and queries share.
class Session {
public:
    Session(const QString& path, const OpenOptions& options);

    const Connection& Store() const { return connection_; }
    Connection& Store() { return connection_; }
    StatementCache& Statements() { return statements_; }
    const SchemaCatalog& Catalog() const { return catalog_; }

    // The plan for the input's text; also noted in the input.
    const Plan& PlanFor(QueryInput& input, dialect::Purpose purpose);

    // Does `work` and, when it fails because another program changed the tables meanwhile, does it once more.
    template <typename Work>
    auto OnCurrentSchema(Work&& work) {
        try {
            return work();
        } catch (const EngineError& error) {
            if (!MayBeOutdated(error.Kind()) || !Refresh()) {
                throw;
            }
        }
        return work();
    }

    // Ends the reading of statements that were left standing, outside a transaction.
    void FreeLocks();
    // Looks whether other users changed tables or stored queries; true when they did.
    bool Refresh();
    // To be told of every change that this program makes (or takes back), by the table's schema name.
    void NoteChange(QStringView table);

    // The transaction that a caller holds open; while it is, single changes are savepoints inside it.
    void Begin();
    void Commit();
    void Rollback() noexcept;
    bool InTransaction() const { return inTransaction_; }

    std::unique_ptr<RecordsetStorage> TakeStorage();
    void GiveBack(std::unique_ptr<RecordsetStorage> storage) noexcept;
    // A number that no other opening of a recordset has.
    quint64 NextOpening() { return ++openings_; }

private:
    static bool MayBeOutdated(EngineErrorNumber number);

    Connection connection_;
    StatementCache statements_;
    SchemaCatalog catalog_;
    PlanCache plans_;
    std::vector<std::unique_ptr<RecordsetStorage>> idleStorage_;
    quint64 openings_ = 0;
    bool inTransaction_ = false;
    bool queriesTouched_ = false;
};

} // namespace velmora::engine::sqlite
