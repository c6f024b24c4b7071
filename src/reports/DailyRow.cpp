#include "reports/DailyRow.h"

namespace velmora {

namespace {

struct Column {
    std::string_view name;
    engine::Field DailyRow::*field;
};

constexpr Column columns[] = {
    {"AssetID", &DailyRow::AssetID},
    {"Asset.Name", &DailyRow::AssetName},
    {"Location", &DailyRow::Location},
    {"EventType", &DailyRow::EventType},
    {"SLockStart", &DailyRow::SLockStart},
    {"SLockEnd", &DailyRow::SLockEnd},
    {"TLockStart", &DailyRow::TLockStart},
    {"TLockEnd", &DailyRow::TLockEnd},
    {"Reservation.Name", &DailyRow::ReservationName},
    {"Start", &DailyRow::Start},
    {"End", &DailyRow::End},
    {"Organization", &DailyRow::Organization},
    {"Storage", &DailyRow::Storage},
    {"Extension", &DailyRow::Extension},
    {"DefaultExtension", &DailyRow::DefaultExtension},
    {"Permanent", &DailyRow::Permanent},
    {"Attendees", &DailyRow::Attendees},
    {"LastName", &DailyRow::LastName},
    {"FirstName", &DailyRow::FirstName},
    {"Jack", &DailyRow::Jack},
    {"Port", &DailyRow::Port},
    {"StationType", &DailyRow::StationType},
    {"SwitchInterface", &DailyRow::SwitchInterface},
    {"ID", &DailyRow::ID},
};

} // namespace

DailyRow DailyRow::Read(const engine::Recordset& rows) {
    DailyRow row;
    for (const Column& column : columns) {
        row.*column.field = rows[column.name];
    }
    return row;
}

} // namespace velmora
