#include "engine/sqlite/SnapshotRecordset.h"

namespace velmora::engine::sqlite {

SnapshotRecordset::SnapshotRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage, QString whyReadOnly)
    : CursorRecordset(session, std::move(storage)), whyReadOnly_(std::move(whyReadOnly)) {
    Fill();
}

void SnapshotRecordset::Fill() {
    const Plan& plan = ThePlan();
    RowArena& rows = storage_->rows;
    storage_->reader.SetTypes(plan.types);
    // An opening that fails on the way leaves an empty set.
    rows.Reset(static_cast<int>(plan.types.size()));
    cursor_.Open(0, session_.NextOpening());
    Statement statement = plan.statement->Acquire(Text());
    storage_->binder.Bind(statement, plan.compiled.bindings, storage_->input);
    while (statement.Step(Text())) {
        rows.Append(statement.Handle());
    }
    cursor_.Open(rows.Size(), session_.NextOpening());
    Arrive();
}

Field SnapshotRecordset::operator[](std::string_view utf8Name) const {
    return Read(IndexOf(utf8Name));
}

Field SnapshotRecordset::FieldAt(int index) const {
    CheckIndex(index);
    return Read(index);
}

void SnapshotRecordset::ThrowNoRecord() const {
    WithText([this] { cursor_.ThrowNoCurrent(); });
}

void SnapshotRecordset::ThrowReadOnly() const {
    Fail(EngineErrorNumber::ReadOnly, whyReadOnly_);
}

} // namespace velmora::engine::sqlite
