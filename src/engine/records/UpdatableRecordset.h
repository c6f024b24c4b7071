#pragma once

#include "engine/records/CursorRecordset.h"
#include "engine/records/RecordWriter.h"

#include <map>

namespace velmora::engine::records {

// A set that can be edited. It keeps the keys of its records as they were at the opening, and reads a record itself
// when it is moved onto, so that it shows what the database holds by then.
class UpdatableRecordset final : public CursorRecordset {
public:
    // The input's query must be updatable.
    UpdatableRecordset(Session& session, QueryInput input);

    void Edit() override;
    void AddNew() override;
    void Set(std::string_view utf8Name, const Value& value) override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    Bookmark LastModified() const override;

private:
    using Base = dialect::BaseTable;
    using ChangesByBase = std::vector<std::vector<FieldChange>>;
    enum class Mode { None, Edit, Add };

    void Fill() override;
    void ReadRecord() override;
    Field ValueAt(int index) const override;

    FieldType TypeOf(int field) const { return Query().types[static_cast<std::size_t>(field)]; }
    const std::vector<Base>& Bases() const { return Query().compiled.bases; }
    // The key of the record that the cursor stands on, of all base tables.
    RecordKey& CurrentKey() { return keys_[static_cast<std::size_t>(cursor_.Position())]; }
    // One base table's part of it.
    RecordKey KeyOf(const RecordKey& key, std::size_t base) const;
    RecordKey KeyIn(std::span<const Field> row) const;
    void DropEdit();
    [[noreturn]] void ThrowDeleted() const;

    void WriteEdit();
    void WriteAddition();
    // What was assigned, by base table; for an edit only what differs from the record as it was read.
    ChangesByBase Changes() const;
    RecordKey KeyAfter(RecordKey key, const ChangesByBase& changes) const;
    void ShowWritten(const ChangesByBase& changes);
    std::size_t BaseOfAddition(const ChangesByBase& changes) const;
    void AppendNewRecords(std::size_t base, const RecordKey& newKey);

    std::vector<RecordKey> keys_;
    // The current record's fields as they were read; empty when it has been deleted, and where there is none.
    std::vector<StoredValue> record_;
    Mode mode_ = Mode::None;
    // The values assigned since Edit or AddNew, by field position.
    std::map<int, StoredValue> assigned_;
    Bookmark lastModified_;
};

} // namespace velmora::engine::records
