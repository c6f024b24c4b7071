#pragma once

#include "engine/Database.h"

#include <memory>

namespace velmora {

// The records that stand below a reservation in the daily report. Each is read when it is opened, so that printing it
// does not touch the database any more.

// The person by name; no row when there is none.
std::unique_ptr<engine::Recordset> OpenPerson(engine::Database& database, const QString& lastName,
                                              const QString& firstName);
// The location (or other asset) by number; no row when there is none.
std::unique_ptr<engine::Recordset> OpenLocation(engine::Database& database, qint16 asset);
// The asset of the first guest extension booked with the reservation, as OpenLocation; null without an extension.
std::unique_ptr<engine::Recordset> OpenGuestLocation(engine::Database& database, qint32 reservation);
std::unique_ptr<engine::Recordset> OpenNotes(engine::Database& database, qint32 reservation);

} // namespace velmora
