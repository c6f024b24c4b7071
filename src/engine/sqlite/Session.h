#pragma once

#include "engine/sqlite/Connection.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/QueryInput.h"
#include "engine/sqlite/SchemaCatalog.h"
#include "engine/sqlite/StatementCache.h"

#include <memory>
#include <utility>
#include <vector>

namespace velmora::engine::sqlite {

// One open database with all that its recordsets and queries share. Each of them keeps it: a set that a program on its
// way out still holds stays good after its database was closed.
class Session : public std::enable_shared_from_this<Session> {
public:
    Session(Presence presence, const QString& path, const OpenOptions& options);

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

    // The read lock that a caller holds over several reads. Begin and End come in pairs.
    void BeginReading();
    void EndReading() noexcept;
    // Gives the read lock up early, before a change.
    void StopReading();

    std::unique_ptr<RecordsetStorage> TakeStorage();
    void GiveBack(std::unique_ptr<RecordsetStorage> storage) noexcept;
    // A number that no other opening of a recordset has.
    quint64 NextOpening() { return ++openings_; }

private:
    static bool MayBeOutdated(EngineErrorNumber number);

    Presence presence_; // goes last: the file counts as open until its connection is closed
    Connection connection_;
    StatementCache statements_;
    SchemaCatalog catalog_;
    PlanCache plans_;
    std::vector<std::unique_ptr<RecordsetStorage>> idleStorage_;
    quint64 openings_ = 0;
    bool inTransaction_ = false;
    int readingScopes_ = 0;
    bool holdsReadLock_ = false;
    bool queriesTouched_ = false;
};

} // namespace velmora::engine::sqlite
