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
    return ValueAt(IndexOf(utf8Name));
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

} // namespace velmora::engine::records
