#include "reports/DetailReader.h"

namespace velmora {

DetailReader::DetailReader(engine::Database& database, const DailyFilter& filter, DetailChoice choice)
    : database_(database), filter_(filter), choice_(choice),
      ahead_(database, [this](const engine::Recordset& rows) { return Read(rows); }) {}

ReservationDetails* DetailReader::Next(engine::Recordset& rows) {
    if (!choice_.persons && !choice_.guestExtensions && !choice_.notes) {
        return nullptr;
    }
    const std::unique_ptr<ReservationDetails>* details = ahead_.Next(rows);
    return details == nullptr ? nullptr : details->get();
}

std::unique_ptr<ReservationDetails> DetailReader::Read(const engine::Recordset& rows) const {
    const DailyRow row = DailyRow::Read(rows);
    if (filter_.LeavesOut(row)) {
        return nullptr;
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
    return details;
}

} // namespace velmora
