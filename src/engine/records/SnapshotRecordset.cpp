#include "engine/records/SnapshotRecordset.h"

namespace velmora::engine::records {

SnapshotRecordset::SnapshotRecordset(Session& session, QueryInput input, QString whyReadOnly)
    : CursorRecordset(session, std::move(input)), whyReadOnly_(std::move(whyReadOnly)) {
    Fill();
}

void SnapshotRecordset::Fill() {
    rows_.Clear();
    cursor_.Open(0, session_.NextOpening());
    const int fields = static_cast<int>(Query().types.size());
    const auto statement = session_.Start(input_);
    while (statement->Step(Text())) {
        statement->AppendRow(rows_, fields);
    }
    cursor_.Open(rows_.Size(), session_.NextOpening());
    ReadRecord();
}

void SnapshotRecordset::ReadRecord() {
    if (cursor_.IsOnRecord()) {
        rows_.Read(cursor_.Position(), Query().types, row_);
    }
}

Field SnapshotRecordset::ValueAt(int index) const {
    if (!cursor_.IsOnRecord()) {
        Position();
    }
    return row_[static_cast<std::size_t>(index)];
}

} // namespace velmora::engine::records
