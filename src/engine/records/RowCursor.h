#pragma once

#include "engine/Recordset.h"

#include <vector>

namespace velmora::engine::records {

// Where a recordset stands among its records. Erased records are not counted and passed over, but the one that is
// erased while it is current stays current until the next move. Errors carry no text of a query.
class RowCursor {
    enum class Place { Before, On, After };

public:
    struct Standing {
        Place place;
        qint64 position;
    };

    // `opening` is a number of this opening's own.
    void Open(qint64 records, quint64 opening);

    void MoveFirst();
    void MoveLast();
    void MoveNext() {
        if (place_ == Place::On && erased_.empty() && position_ + 1 < records_) {
            ++position_;
            return;
        }
        MoveOn();
    }
    void MovePrevious();

    // An empty set is at both ends, but for a set that still stands on the last record that it had.
    bool EndOfFile() const { return place_ == Place::After || (place_ == Place::Before && Count() == 0); }
    bool BeginOfFile() const { return place_ == Place::Before || (place_ == Place::After && Count() == 0); }
    // True on a record, erased or not.
    bool IsOnRecord() const { return place_ == Place::On; }
    bool IsOnErased() const { return IsOnRecord() && IsErased(position_); }
    // Throws NoCurrentRecord unless it stands on a record.
    qint64 Position() const {
        if (place_ != Place::On) {
            ThrowNoCurrent();
        }
        return position_;
    }
    [[noreturn]] void ThrowNoCurrent() const;

    qint64 Count() const { return records_ - static_cast<qint64>(erased_.size()); }
    double Percent() const;

    Bookmark Mark() const { return MarkOf(Position()); }
    Bookmark MarkOf(qint64 position) const { return Bookmark(opening_, position); }
    // Throws InvalidArgument for another opening's bookmark, RecordDeleted for an erased record's.
    void GoTo(Bookmark bookmark);

    Standing Where() const { return {place_, position_}; }
    // Back to where it stood before its last moves; nothing was appended or erased in between.
    void Return(Standing standing) {
        place_ = standing.place;
        position_ = standing.position;
    }

    // A record more behind the last; the current one stays.
    void Append() { ++records_; }
    // Takes the current record out of the set.
    void EraseCurrent();

private:
    bool IsErased(qint64 position) const;
    void MoveOn();

    Place place_ = Place::After;
    qint64 position_ = 0;
    qint64 records_ = 0;
    quint64 opening_ = 0;
    std::vector<qint64> erased_; // ascending
};

} // namespace velmora::engine::records
