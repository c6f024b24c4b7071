#pragma once

#include "engine/sqlite/CursorRecordset.h"
#include "engine/sqlite/EditBuffer.h"
#include "engine/sqlite/RecordWriter.h"

namespace velmora::engine::sqlite {

// A set that can be edited. It keeps the keys of its records as they were at the opening, and reads a record itself
// when its first field is asked for after a move, so that it shows what the database holds by then.
class UpdatableRecordset final : public CursorRecordset {
public:
    // The plan must be updatable.
    UpdatableRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage);

    Field operator[](std::string_view utf8Name) const override;
    Field FieldAt(int index) const override;

    void Edit() override;
    void AddNew() override;
    void Set(std::string_view utf8Name, const Value& value) override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    Bookmark LastModified() const override;

private:
    using Base = dialect::BaseTable;

    // Exactly one record's fields, as last read.
    struct Record {
        RowArena row;
        RowReader reader;
    };

    void Fill() override;
    void Arrive() override;

    Field Show(int index) const;
    // Reads the current record unless that was done since the last move. Throws NoCurrentRecord, RecordDeleted.
    void Load() const;
    // False when there is no such record any more.
    bool Read(const std::vector<Field>& key, Record& into) const;
    [[noreturn]] void ThrowDeleted() const;

    const std::vector<Base>& Bases() const { return ThePlan().compiled.bases; }
    // The keys of the current record: of all base tables, or of one.
    std::vector<Field> CurrentKey() const;
    std::vector<Field> KeyOf(const std::vector<Field>& keys, std::size_t base) const;

    void WriteEdit();
    void WriteAddition();
    // What was assigned, by base table; for an edit only what differs from the record as it was read.
    std::vector<std::vector<FieldChange>> Changes() const;
    std::vector<Field> KeyAfter(std::vector<Field> keys, const std::vector<std::vector<FieldChange>>& changes) const;
    std::size_t BaseOfAddition(const std::vector<std::vector<FieldChange>>& changes) const;
    void AppendNewRecords(std::size_t base, const std::vector<Field>& newKey);

    RowArena keys_;
    mutable RowReader keyReader_;
    mutable Record record_;
    mutable bool loaded_ = false;
    mutable Statement reread_;
    mutable ValueBinder rereadBinder_;
    EditBuffer edit_;
    Bookmark lastModified_;
};

} // namespace velmora::engine::sqlite
