#include "engine/records/RowCursor.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

namespace {

[[noreturn]] void ThrowNoRecord(const QString& description) {
    throw EngineError(EngineErrorNumber::NoCurrentRecord, description);
}

} // namespace

void RowCursor::Open(qint64 records, quint64 opening) {
    records_ = records;
    opening_ = opening;
    erased_.clear();
    position_ = 0;
    place_ = records > 0 ? Place::On : Place::After;
}

bool RowCursor::IsErased(qint64 position) const {
    return std::binary_search(erased_.begin(), erased_.end(), position);
}

void RowCursor::MoveFirst() {
    if (Count() == 0) {
        ThrowNoRecord(u"There is no first record: the recordset is empty."_s);
    }
    position_ = 0;
    while (IsErased(position_)) {
        ++position_;
    }
    place_ = Place::On;
}

void RowCursor::MoveLast() {
    if (Count() == 0) {
        ThrowNoRecord(u"There is no last record: the recordset is empty."_s);
    }
    position_ = records_ - 1;
    while (IsErased(position_)) {
        --position_;
    }
    place_ = Place::On;
}

void RowCursor::MoveOn() {
    if (EndOfFile()) {
        ThrowNoRecord(u"There is no next record: the recordset is at its end."_s);
    }
    position_ = place_ == Place::Before ? 0 : position_ + 1;
    while (position_ < records_ && IsErased(position_)) {
        ++position_;
    }
    place_ = position_ < records_ ? Place::On : Place::After;
}

void RowCursor::MovePrevious() {
    if (BeginOfFile()) {
        ThrowNoRecord(u"There is no previous record: the recordset is before its first."_s);
    }
    position_ = (place_ == Place::After ? records_ : position_) - 1;
    while (position_ >= 0 && IsErased(position_)) {
        --position_;
    }
    place_ = position_ >= 0 ? Place::On : Place::Before;
}

void RowCursor::ThrowNoCurrent() const {
    ThrowNoRecord(Count() == 0
                      ? u"There is no current record: the recordset is empty."_s
                      : u"There is no current record: the recordset is before its first or behind its last one."_s);
}

double RowCursor::Percent() const {
    if (Count() == 0 || place_ == Place::Before) {
        return 0;
    }
    if (place_ == Place::After) {
        return 100;
    }
    const auto erasedBefore = std::lower_bound(erased_.begin(), erased_.end(), position_) - erased_.begin();
    return 100.0 * static_cast<double>(position_ - erasedBefore) / static_cast<double>(Count());
}

void RowCursor::GoTo(Bookmark bookmark) {
    if (bookmark.Opening() != opening_ || bookmark.Position() < 0 || bookmark.Position() >= records_) {
        throw EngineError(EngineErrorNumber::InvalidArgument,
                          u"The bookmark is not of this recordset, or from before it was queried again."_s);
    }
    if (IsErased(bookmark.Position())) {
        throw EngineError(EngineErrorNumber::RecordDeleted, u"The bookmarked record has been deleted."_s);
    }
    position_ = bookmark.Position();
    place_ = Place::On;
}

void RowCursor::EraseCurrent() {
    const qint64 position = Position();
    erased_.insert(std::upper_bound(erased_.begin(), erased_.end(), position), position);
}

} // namespace velmora::engine::records
