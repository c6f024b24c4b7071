#include "desk/DetailReader.h"

namespace velmora {

namespace {

// Enough to make the lock's share small, and over in about a millisecond.
constexpr size_t rowsAhead = 16;

} // namespace

ReservationDetails* DetailReader::Next(engine::Recordset& rows) {
    if (!choice_.persons && !choice_.guestExtensions && !choice_.notes) {
        return nullptr;
    }
    if (next_ == ahead_.size()) {
        ReadAhead(rows);
    }
    return ahead_[next_++].get();
}

void DetailReader::ReadAhead(engine::Recordset& rows) {
    ahead_.clear();
    ahead_.resize(rowsAhead);
    next_ = 0;
    const engine::Bookmark current = rows.CurrentBookmark();
    try {
        const engine::ReadScope scope(database_);
        for (size_t i = 0; i < rowsAhead && !rows.EndOfFile(); ++i, rows.MoveNext()) {
            const DailyRow row = DailyRow::Read(rows);
            if (filter_.LeavesOut(row)) {
                continue;
            }
            auto details = std::make_unique<ReservationDetails>();
            const auto reservation = static_cast<qint32>(row.ID.ToInteger());
            if (choice_.persons) {
                details->person = OpenPerson(database_, row.LastName.ToText(), row.FirstName.ToText());
            }
            if (choice_.guestExtensions) {
                details->guestLocation = OpenGuestLocation(database_, reservation);
            }
            if (choice_.notes) {
                details->notes = OpenNotes(database_, reservation);
            }
            ahead_[i] = std::move(details);
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
        // The block that needs the record reads it again and tells the failure.
    }
    rows.GoTo(current);
}

} // namespace velmora
