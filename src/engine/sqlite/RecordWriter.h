#pragma once

#include "engine/sqlite/Session.h"

#include <functional>
#include <vector>

namespace velmora::engine::sqlite {

// One field of a record to be written, a plain column of a base table.
struct FieldChange {
    int field = 0; // position in the plan
    Field before;  // as last read; not used for a new record
    Field after;
};

// Writes single records of a plan's base tables, which are named by their index. Works inside the transaction of its
// caller, which takes everything back when one of these throws.
class RecordWriter {
public:
    // `sql` is the caller's text for the errors. All three must outlive the writer.
    RecordWriter(Session& session, const Plan& plan, const QString& sql) : session_(session), plan_(plan), sql_(sql) {}

    // Changes the row with that key, if the fields still hold what they held before. Throws RecordChanged naming the
    // fields that another user changed, RecordDeleted, DuplicateKey, ConstraintFailed, RecordLocked.
    void Update(std::size_t base, const std::vector<Field>& key, const std::vector<FieldChange>& changes);
    // Adds a row and shows `onKey` a statement whose columns are the new row's key.
    void Insert(std::size_t base, const std::vector<FieldChange>& fields,
                const std::function<void(sqlite3_stmt*)>& onKey);
    void Delete(std::size_t base, const std::vector<Field>& key);

private:
    [[noreturn]] void ExplainRefusal(std::size_t base, const std::vector<Field>& key,
                                     const std::vector<FieldChange>& changes);
    PreparedText& UpdateOf(std::size_t base, const std::vector<FieldChange>& changes) const;
    QByteArray UpdateText(std::size_t base, const std::vector<FieldChange>& changes) const;
    void AppendStillHolds(QByteArray& text, const FieldChange& change) const;
    void BindBefore(Statement& statement, int place, const FieldChange& change) const;
    const QByteArray& ColumnOf(const FieldChange& change) const {
        return plan_.columns[static_cast<std::size_t>(change.field)];
    }
    FieldType TypeOf(const FieldChange& change) const { return plan_.types[static_cast<std::size_t>(change.field)]; }
    [[noreturn]] void ThrowDeleted() const;

    Session& session_;
    const Plan& plan_;
    const QString& sql_;
};

} // namespace velmora::engine::sqlite
