#include "engine/sqlite/CursorRecordset.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

CursorRecordset::CursorRecordset(Session& session, std::unique_ptr<RecordsetStorage> storage)
    : session_(session), keepsSession_(session.shared_from_this()), storage_(std::move(storage)) {}

CursorRecordset::~CursorRecordset() {
    session_.GiveBack(std::move(storage_));
}

void CursorRecordset::MoveFirst() {
    WithText([this] { cursor_.MoveFirst(); });
    Arrive();
}

void CursorRecordset::MoveLast() {
    WithText([this] { cursor_.MoveLast(); });
    Arrive();
}

void CursorRecordset::MoveNext() {
    WithText([this] { cursor_.MoveNext(); });
    Arrive();
}

void CursorRecordset::MovePrevious() {
    WithText([this] { cursor_.MovePrevious(); });
    Arrive();
}

void CursorRecordset::GoTo(Bookmark bookmark) {
    WithText([&] { cursor_.GoTo(bookmark); });
    Arrive();
}

Bookmark CursorRecordset::CurrentBookmark() const {
    return WithText([this] { return cursor_.Mark(); });
}

void CursorRecordset::Requery() {
    Fill();
}

void CursorRecordset::CheckIndex(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= ThePlan().types.size()) {
        Fail(EngineErrorNumber::UnknownItem,
             u"There is no field number %1: the query has %2."_s.arg(index).arg(ThePlan().types.size()));
    }
}

void CursorRecordset::Fail(EngineErrorNumber number, const QString& description) const {
    throw EngineError(number, description, Text());
}

} // namespace velmora::engine::sqlite
