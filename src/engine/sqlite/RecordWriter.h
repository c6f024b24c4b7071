#pragma once

#include "engine/sqlite/Session.h"

#include <functional>
#include <vector>

namespace velmora::engine::sqlite {

// One field of a record to be written.
struct FieldChange {
    QString column; // schema name
    FieldType type = FieldType::Unknown;
    Field before; // as last read; not used for a new record
    Field after;
};

// Writes single records of a table. Works inside the transaction of its caller, which takes everything back when one
// of these throws.
class RecordWriter {
public:
    // `sql` is the caller's text for the errors.
    RecordWriter(Session& session, const QString& sql) : session_(session), sql_(sql) {}

    // Changes the row with that key, if the fields still hold what they held before. Throws RecordChanged naming the
    // fields that another user changed, RecordDeleted, DuplicateKey, ConstraintFailed, RecordLocked.
    void Update(const dialect::BaseTable& table, const std::vector<Field>& key,
                const std::vector<FieldChange>& changes);
    // Adds a row and shows `onKey` a statement whose columns are the new row's key.
    void Insert(const dialect::BaseTable& table, const std::vector<FieldChange>& fields,
                const std::function<void(sqlite3_stmt*)>& onKey);
    void Delete(const dialect::BaseTable& table, const std::vector<Field>& key);

private:
    [[noreturn]] void ExplainRefusal(const dialect::BaseTable& table, const std::vector<Field>& key,
                                     const std::vector<FieldChange>& changes);
    [[noreturn]] void ThrowDeleted() const;

    Session& session_;
    const QString& sql_;
};

} // namespace velmora::engine::sqlite
