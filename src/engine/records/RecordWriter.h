#pragma once

#include "engine/records/Session.h"
#include "engine/records/StoredValue.h"

#include <vector>

namespace velmora::engine::records {

// The key of a row, its columns in the order of the table's key.
using RecordKey = std::vector<StoredValue>;

// One field of a record to be written, a plain column of a base table.
struct FieldChange {
    int field = 0;      // position in the query
    StoredValue before; // as last read; not used for a new record
    StoredValue after;
};

// Writes single records of a query's base tables, which are named by their index. Works inside the transaction of its
// caller, which takes everything back when one of these throws.
class RecordWriter {
public:
    // `sql` is the caller's text for the errors. All three must outlive the writer.
    RecordWriter(Session& session, const CompiledQuery& query, const QString& sql)
        : session_(session), query_(query), sql_(sql) {}

    // Changes the row with that key, if the fields still hold what they held before. Throws RecordChanged naming the
    // fields that another user changed, RecordDeleted, DuplicateKey, ConstraintFailed, RecordLocked.
    void Update(std::size_t base, const RecordKey& key, const std::vector<FieldChange>& changes);
    // Adds a row; returns its key.
    RecordKey Insert(std::size_t base, const std::vector<FieldChange>& fields);
    // Throws RecordDeleted when there is no such row any more.
    void Delete(std::size_t base, const RecordKey& key);

private:
    [[noreturn]] void ExplainRefusal(std::size_t base, const RecordKey& key, const std::vector<FieldChange>& changes);
    const dialect::SqlWriter& Writer() const { return session_.Connection().Writer(); }
    // Conditions whose places follow `place`, the number of the last one.
    void AppendKey(QByteArray& sql, std::size_t base, std::size_t& place) const;
    QByteArray StillHolds(const FieldChange& change, std::size_t& place) const;
    const QByteArray& ColumnOf(const FieldChange& change) const {
        return query_.columns[static_cast<std::size_t>(change.field)];
    }
    FieldType TypeOf(const FieldChange& change) const { return query_.types[static_cast<std::size_t>(change.field)]; }
    StatementCache::Lease Prepare(const QByteArray& text) { return session_.Statements().Acquire(text, sql_); }
    // Runs a statement that changes one row at most; false when it changed none.
    bool ChangesARow(StoreStatement& statement);
    [[noreturn]] void ThrowDeleted() const;

    Session& session_;
    const CompiledQuery& query_;
    const QString& sql_;
};

} // namespace velmora::engine::records
