#pragma once

#include "engine/Recordset.h"

namespace velmora {

// One row of a daily report's query; good until the recordset moves.
struct DailyRow {
    engine::Field AssetID;
    engine::Field AssetName;
    engine::Field Location;
    engine::Field EventType;
    engine::Field SLockStart;
    engine::Field SLockEnd;
    engine::Field TLockStart;
    engine::Field TLockEnd;
    engine::Field ReservationName;
    engine::Field Start;
    engine::Field End;
    engine::Field Organization;
    engine::Field Storage;
    engine::Field Extension;
    engine::Field DefaultExtension;
    engine::Field Permanent;
    engine::Field Attendees;
    engine::Field LastName;
    engine::Field FirstName;
    engine::Field Jack;
    engine::Field Port;
    engine::Field StationType;
    engine::Field SwitchInterface;
    engine::Field ID;

    // Throws EngineError naming a field that the query does not return.
    static DailyRow Read(const engine::Recordset& rows);
};

} // namespace velmora
