#pragma once

#include "engine/Database.h"
#include "engine/records/CompiledQuery.h"
#include "engine/records/RowArena.h"
#include "engine/records/SchemaCatalog.h"
#include "engine/records/StatementCache.h"

#include <memory>

namespace velmora::engine::records {

// One open database with all that its recordsets and queries share. Each of them keeps it: a set that a program on its
// way out still holds stays good after its database was closed.
class Session : public std::enable_shared_from_this<Session> {
public:
    explicit Session(std::unique_ptr<StoreConnection> connection)
        : connection_(std::move(connection)), statements_(*connection_), catalog_(*connection_, statements_) {}

    StoreConnection& Connection() { return *connection_; }
    StatementCache& Statements() { return statements_; }
    // Tables and stored queries, read if that has not been done yet.
    const SchemaCatalog& Catalog();

    // Finds or compiles the query of the input's text, and notes it and the text's literals in the input.
    const CompiledQuery& Compile(QueryInput& input, dialect::Purpose purpose);
    // The statement of the input's query with its values bound.
    StatementCache::Lease Start(const QueryInput& input);

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
    // To be called for every change that this program makes (or takes back), with the table's schema name.
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

    // Memory for the rows of snapshots that earlier ones gave back.
    std::vector<RowArena::Chunk>& SpareRowMemory() { return spareRowMemory_; }

    // A number that no other opening of a recordset has.
    quint64 NextOpening() { return ++openings_; }

private:
    static bool MayBeOutdated(EngineErrorNumber number);

    std::unique_ptr<StoreConnection> connection_;
    StatementCache statements_;
    SchemaCatalog catalog_;
    QueryCache toRead_{dialect::Purpose::Read, connection_->Writer()};
    QueryCache toUpdate_{dialect::Purpose::Update, connection_->Writer()};
    std::vector<RowArena::Chunk> spareRowMemory_;
    quint64 openings_ = 0;
    bool inTransaction_ = false;
    int readingScopes_ = 0;
    bool holdsReadLock_ = false;
    bool queriesTouched_ = false;
};

// The transaction of one change: a real one that takes the write lock at once, or a savepoint inside the transaction
// that the caller holds open. Undone when the scope is left without Commit.
class WriteScope {
public:
    // `sql` is the text that the change belongs to, for the errors.
    WriteScope(Session& session, const QString& sql);
    ~WriteScope();
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    // Throws RecordLocked when readers keep the file for longer than the store waits; the change is then undone.
    void Commit();

private:
    Session& session_;
    const QString& sql_;
    const TransactionKind kind_;
    bool open_ = true;
};

} // namespace velmora::engine::records
