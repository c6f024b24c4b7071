#pragma once

#include "reports/Gather.h"
#include "reports/Occupancy.h"
#include "reports/ReportDays.h"

namespace velmora {

// A row of the occupant or the directory report. The location's name and the person's are its keys.
struct OccupancyRow : Occupancy {
    QUtf8StringView organization;
    QUtf8StringView phone;
    QUtf8StringView extension;
    // False for an occupant without a record of the person.
    bool hasPhone = true;
};

inline constexpr TextField<OccupancyRow> occupancyTexts[] = {
    {"Name", &OccupancyRow::location},
    {"LastName", &OccupancyRow::lastName},
    {"FirstName", &OccupancyRow::firstName},
    {"Organization", &OccupancyRow::organization},
};

// The directory has them of its query, the occupants of the person.
inline constexpr TextField<OccupancyRow> phoneTexts[] = {
    {"Phone", &OccupancyRow::phone},
    {"Extension", &OccupancyRow::extension},
};

using OccupancyRows = Gathered<OccupancyRow>;

// Over the days up to the first moment of `end`: by location, and by person.
OccupancyRows GatherOccupants(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering);
OccupancyRows GatherDirectory(const OccupancyRequest& request, const ReportDays& days, const Gathering& gathering);

} // namespace velmora
