#pragma once

#include "engine/Catalog.h"
#include "engine/Recordset.h"
#include "engine/Schema.h"
#include "engine/dialect/SqlWriter.h"
#include "engine/records/RowArena.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace velmora::engine::records {

// What the record machinery asks of a store, and all that a store has to provide. Failures are EngineErrors;
// `callerText` is the text in the program's dialect that a call serves, for the error.

// A statement as the store has prepared it. Must not outlive its connection.
class StoreStatement {
public:
    virtual ~StoreStatement() = default;
    StoreStatement(const StoreStatement&) = delete;
    StoreStatement& operator=(const StoreStatement&) = delete;

    // Places count from 1. The value is copied.
    virtual void Bind(int place, const Field& value) = 0;
    // Goes to the next row; false behind the last one.
    virtual bool Step(const QString& callerText) = 0;
    // Reads the first `row.size()` values of the current row, without types. Texts are good until the next Step or
    // Reset.
    virtual void ReadRow(std::span<Field> row) const = 0;
    // Adds the first `fields` values of the current row as a row of `rows`.
    virtual void AppendRow(RowArena& rows, int fields) const = 0;
    // Makes the statement ready to run again and gives up the locks that reading took. Bound values stay.
    virtual void Reset() noexcept = 0;

protected:
    StoreStatement() = default;
};

enum class TransactionKind {
    Read,   // several reads that see the same state
    Write,  // takes the write lock at once
    Nested, // a part of one that writes, which can be taken back by itself
};

// One connection to a store, used by one thread.
class StoreConnection {
public:
    virtual ~StoreConnection() = default;
    StoreConnection(const StoreConnection&) = delete;
    StoreConnection& operator=(const StoreConnection&) = delete;

    virtual std::unique_ptr<StoreStatement> Prepare(const QByteArray& sql, const QString& callerText) = 0;
    // Rows changed by the statement that ran last.
    virtual qint64 RowsChanged() const = 0;

    virtual void Begin(TransactionKind kind, const QString& callerText) = 0;
    virtual void Commit(TransactionKind kind, const QString& callerText) = 0;
    virtual void Rollback(TransactionKind kind) = 0;
    // False also when the store took a transaction back by itself after a failure.
    virtual bool InTransaction() const = 0;
    // Resets every statement that was left standing on a row.
    virtual void EndReading() noexcept = 0;

    // How the SQL of this store is written.
    virtual const dialect::SqlWriter& Writer() const = 0;

    // Adds a table with its indexes, unless it is there already.
    virtual void AddTable(const TableDefinition& table) = 0;
    // All tables with their columns and keys.
    virtual std::vector<CatalogTable> ReadTables() = 0;
    // Another number whenever a program has changed the tables.
    virtual qint64 SchemaVersion() = 0;

protected:
    StoreConnection() = default;
};

} // namespace velmora::engine::records
