#pragma once

#include "base/Value.h"
#include "engine/Catalog.h"
#include "engine/EngineError.h"
#include "engine/Recordset.h"
#include "engine/Schema.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <memory>
#include <vector>

namespace velmora::engine {

enum class IdleOption {
    FreeLocks,    // gives up read locks that are still held
    RefreshCache, // forgets cached pages, schema and stored queries, so that the next read sees other users' changes
};

struct OpenOptions {
    // What the program knows: a database that lacks a table, column or index which its own version of the schema has,
    // or cannot read a first entry, is damaged.
    Schema schema{};
    // How long a statement waits for another user's lock before it fails with RecordLocked.
    int busyMilliseconds = 5000;
    // What Date() and Now() in a text mean; without one the system's wall clock.
    std::function<DateTime()> now{};
};

struct NamedValue {
    QString name;
    Value value;
};

// A stored query, or a text given for one call, with its parameters. Keeps the file open as a recordset does. Names
// ignore letter case.
class QueryDef {
public:
    virtual ~QueryDef() = default;
    QueryDef(const QueryDef&) = delete;
    QueryDef& operator=(const QueryDef&) = delete;

    // Throws UnknownItem when the query has no parameter of that name.
    virtual void SetParameter(QStringView name, const Value& value) = 0;
    // The parameters that the text names, declared ones first; a name without a declaration has type Unknown.
    struct ParameterDescription {
        QString name;
        FieldType type = FieldType::Unknown;
        bool declared = false;
    };
    virtual std::vector<ParameterDescription> Parameters() const = 0;
    // False for a query that reads rows, true for one that changes them.
    virtual bool IsAction() const = 0;

    // Throws MissingParameter naming every parameter that has no value yet.
    virtual std::unique_ptr<Recordset> OpenRecordset(RecordsetKind kind = RecordsetKind::Snapshot) = 0;
    // Rows affected.
    virtual qint64 Execute() = 0;

protected:
    QueryDef() = default;
};

// An open database file, shared with other users. One thread. Destroying it closes the file once the recordsets and
// queries that it gave out are gone too.
//
// The SQL texts are in the program's own dialect. Every failure is an EngineError with the text at fault.
class Database {
public:
    // Throws FileNotFound (never creates the file), Damaged, NewerVersion, CannotOpen.
    static std::unique_ptr<Database> Open(const QString& path, const OpenOptions& options = {});

    virtual ~Database() = default;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // `source` is an SQL text, or the name of a table or stored query. A text with a missing parameter fails with
    // MissingParameter. The set stands on its first record.
    virtual std::unique_ptr<Recordset> OpenRecordset(QStringView source,
                                                     RecordsetKind kind = RecordsetKind::Snapshot) = 0;
    // Runs an action statement in a transaction of its own; returns the rows affected. Nothing is changed on failure.
    virtual qint64 Execute(QStringView sql) = 0;

    // The stored query of that name; throws UnknownTable without one.
    virtual std::unique_ptr<QueryDef> OpenQueryDef(QStringView name) = 0;
    // A query on a text of the caller's.
    virtual std::unique_ptr<QueryDef> CreateQueryDef(const QString& sql) = 0;
    virtual QStringList QueryNames() = 0;

    // Adds a table with its indexes, unless it is there already; a part of the transaction that is open.
    virtual void AddTable(const TableDefinition& table) = 0;

    virtual void Idle(IdleOption option) = 0;

    // Tables, columns and stored queries as they were when last read.
    virtual const Catalog& Schema() = 0;
    virtual const QString& Location() const = 0;

    // What Transaction and ReadScope stand on, which callers use instead of these. Transactions do not nest; read
    // scopes do, and BeginReading and EndReading come in pairs.
    virtual void BeginTransaction() = 0;
    virtual void CommitTransaction() = 0;
    virtual void RollbackTransaction() noexcept = 0;
    virtual void BeginReading() = 0;
    virtual void EndReading() noexcept = 0;

protected:
    Database() = default;
};

// Several changes as one: kept by Commit, undone when the guard goes without it. Takes the write lock at once, so it
// must not live across a question to the user. Does not nest.
class Transaction {
public:
    explicit Transaction(Database& database) : database_(&database) { database.BeginTransaction(); }
    ~Transaction() {
        if (database_ != nullptr) {
            database_->RollbackTransaction();
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit() {
        if (database_ == nullptr) {
            throw EngineError(EngineErrorNumber::InvalidArgument,
                              QStringLiteral("The transaction has been committed already."));
        }
        database_->CommitTransaction();
        database_ = nullptr;
    }

private:
    Database* database_;
};

// Several small reads for the price of one: the database's read lock is taken once and they all see the same state.
// Until the scope ends other users' changes wait, so it must not live across a question to the user or pending events.
// A change made inside ends it early. Nests.
class ReadScope {
public:
    explicit ReadScope(Database& database) : database_(database) { database_.BeginReading(); }
    ~ReadScope() { database_.EndReading(); }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

private:
    Database& database_;
};

} // namespace velmora::engine
