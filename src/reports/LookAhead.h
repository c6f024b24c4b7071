#pragma once

#include "engine/Database.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmora {

// Reads what belongs to the rows of a report some rows ahead, under one read lock: on a file that several desks share,
// taking the lock anew for every small record costs more than reading it. The lock is gone before the report lets
// events through.
//
// Reading ahead fails silently: what could not be read is asked for again when it is needed, and told then.
template <typename Result>
class LookAhead {
public:
    // Reads what belongs to the current row. May be called for rows ahead of the report's.
    using Read = std::function<Result(const engine::Recordset& rows)>;

    LookAhead(engine::Database& database, Read read) : database_(database), read_(std::move(read)) {}

    // What was read for the current row; null when that failed. Call it for every row in turn, before its fields are
    // read: the set moves meanwhile and comes back. Good until the next call.
    Result* Next(engine::Recordset& rows) {
        if (next_ == ahead_.size()) {
            ReadAhead(rows);
        }
        std::optional<Result>& result = ahead_[next_++];
        return result ? &*result : nullptr;
    }

private:
    // Enough to make the lock's share small, and over in about a millisecond.
    static constexpr size_t rowsAhead = 16;

    void ReadAhead(engine::Recordset& rows) {
        ahead_.clear();
        ahead_.resize(rowsAhead);
        next_ = 0;
        const engine::Bookmark current = rows.CurrentBookmark();
        try {
            const engine::ReadScope scope(database_);
            for (size_t i = 0; i < rowsAhead && !rows.EndOfFile(); ++i, rows.MoveNext()) {
                ahead_[i] = read_(rows);
            }
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
            // Whoever needs the record reads it again and tells the failure.
        }
        rows.GoTo(current);
    }

    engine::Database& database_;
    Read read_;
    std::vector<std::optional<Result>> ahead_;
    size_t next_ = 0;
};

} // namespace velmora
