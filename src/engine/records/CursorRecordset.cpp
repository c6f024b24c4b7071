#include "engine/records/CursorRecordset.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

CursorRecordset::CursorRecordset(Session& session, QueryInput input)
    : session_(session), keepsSession_(session.shared_from_this()), input_(std::move(input)) {}

void CursorRecordset::GoTo(Bookmark bookmark) {
    MoveBy([&] { cursor_.GoTo(bookmark); });
}

Bookmark CursorRecordset::CurrentBookmark() const {
    return WithText([this] { return cursor_.Mark(); });
}

Field CursorRecordset::operator[](std::string_view utf8Name) const {
    const int spelt = Query().names.FindSpelt(utf8Name);
    return ValueAt(spelt == FieldNames::none ? IndexOf(utf8Name) : spelt);
}

Field CursorRecordset::FieldAt(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= Query().types.size()) {
        Fail(EngineErrorNumber::UnknownItem,
             u"There is no field number %1: the query has %2."_s.arg(index).arg(Query().types.size()));
    }
    return ValueAt(index);
}

void CursorRecordset::Fail(EngineErrorNumber number, const QString& description) const {
    throw EngineError(number, description, Text());
}

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
