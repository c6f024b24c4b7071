#pragma once

#include "engine/records/CursorRecordset.h"
#include "engine/records/RowArena.h"

namespace velmora::engine::records {

// The rows as they were at the opening, all read at once: while the caller works through them, no lock is held and no
// other user waits.
class SnapshotRecordset final : public CursorRecordset {
public:
    // `whyReadOnly` is the error of an attempt to change the set.
    SnapshotRecordset(Session& session, QueryInput input, QString whyReadOnly);

    void Edit() override { ThrowReadOnly(); }
    void AddNew() override { ThrowReadOnly(); }
    void Set(std::string_view, const Value&) override { ThrowReadOnly(); }
    void Update() override { ThrowReadOnly(); }
    void CancelUpdate() override {}
    void Delete() override { ThrowReadOnly(); }
    Bookmark LastModified() const override { ThrowReadOnly(); }

private:
    void Fill() override;
    void ReadRecord() override;
    Field ValueAt(int index) const override;
    [[noreturn]] void ThrowReadOnly() const { Fail(EngineErrorNumber::ReadOnly, whyReadOnly_); }

    QString whyReadOnly_;
    RowArena rows_{session_.RowMemory()};
    // The fields of the current record.
    std::vector<Field> row_;
};

} // namespace velmora::engine::records
