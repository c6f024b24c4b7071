#pragma once

#include "engine/Database.h"
#include "engine/dialect/SqlWriter.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Statement.h"

#include <chrono>

namespace velmora::engine::sqlite {

// How the SQL of the embedded store is written.
const dialect::SqlWriter& Writer() noexcept;

// A database file shared with other users. Waits for their locks for the time that the options name.
class FileStore final : public records::StoreConnection {
public:
    // Opens an existing file for reading and writing and checks it; never creates one. Throws FileNotFound, Damaged,
    // CannotOpen.
    FileStore(const QString& path, const OpenOptions& options);

    std::unique_ptr<records::StoreStatement> Prepare(const QByteArray& sql, const QString& callerText) override;
    qint64 RowsChanged() const override { return sqlite3_changes64(connection_.Handle()); }
    void Begin(records::TransactionKind kind, const QString& callerText) override;
    void Commit(records::TransactionKind kind, const QString& callerText) override;
    void Rollback(records::TransactionKind kind) override;
    bool InTransaction() const override { return sqlite3_get_autocommit(connection_.Handle()) == 0; }
    void EndReading() noexcept override;
    const dialect::SqlWriter& Writer() const override { return sqlite::Writer(); }
    void AddTable(const TableDefinition& table) override;
    std::vector<CatalogTable> ReadTables() override;
    qint64 SchemaVersion() override;

private:
    static int WaitForLock(void* self, int attempts);
    static void Run(Statement& statement, const QString& callerText);
    void Configure();
    void SetWriting();
    Statement Own(const char* sql) const { return Statement(connection_.Handle(), sql, {}, onDamage_); }

    Presence presence_; // goes last: the file counts as open until its connection is closed
    std::chrono::milliseconds patience_;
    std::chrono::steady_clock::time_point deadline_;
    // Leaves a mark beside the file, so that the next opening looks everywhere. Empty until the file has been checked.
    Statement::DamageHook onDamage_;
    Connection connection_;
    Statement beginReading_ = Own("BEGIN");
    Statement beginWriting_ = Own("BEGIN IMMEDIATE");
    Statement beginNested_ = Own("SAVEPOINT change");
    Statement commit_ = Own("COMMIT");
    Statement commitNested_ = Own("RELEASE change");
    Statement rollback_ = Own("ROLLBACK");
    Statement rollbackNested_ = Own("ROLLBACK TO change");
};

} // namespace velmora::engine::sqlite
