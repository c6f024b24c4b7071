#pragma once

#include "engine/sqlite/CursorRecordset.h"

namespace velmora::engine::sqlite {

// The rows as they were at the opening, all read at once: while the caller works through them, no lock is held and no
// other user waits.
class SnapshotRecordset final : public CursorRecordset {
public:
    // `whyReadOnly` is what an attempt to change the set is told.
    SnapshotRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage, QString whyReadOnly);

    Field operator[](std::string_view utf8Name) const override;
    Field FieldAt(int index) const override;

    void Edit() override { ThrowReadOnly(); }
    void AddNew() override { ThrowReadOnly(); }
    void Set(std::string_view, const Value&) override { ThrowReadOnly(); }
    void Update() override { ThrowReadOnly(); }
    void CancelUpdate() override {}
    void Delete() override { ThrowReadOnly(); }
    Bookmark LastModified() const override { ThrowReadOnly(); }

private:
    void Fill() override;
    void Arrive() override {
        if (cursor_.IsOnRecord()) {
            storage_->reader.Show(storage_->rows.At(cursor_.Position()));
        } else {
            storage_->reader.Leave();
        }
    }
    Field Read(int index) const {
        if (!storage_->reader.HasRow()) {
            ThrowNoRecord();
        }
        return storage_->reader.At(index);
    }
    void ThrowNoRecord() const;
    [[noreturn]] void ThrowReadOnly() const;

    QString whyReadOnly_;
};

} // namespace velmora::engine::sqlite
