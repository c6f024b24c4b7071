#pragma once

#include "demo/Assets.h"
#include "demo/Persons.h"
#include "demo/Random.h"
#include "demo/Scale.h"

#include <vector>

namespace velmora::demo {

enum class OccupancyKind { Office, Telephone, Vacant };

// Somebody's office or telephone line for years, or the time in which a place stands empty.
struct Occupancy {
    OccupancyKind kind = OccupancyKind::Office;
    int asset = 0;                  // index into the assets
    const Person* person = nullptr; // none when vacant
    DateTime start{};
    DateTime end{};
};

// Who sat, sits and will sit in the offices and has the lines, the earliest start first. Occupancies of one asset do
// not overlap. Gives the present occupants their office.
std::vector<Occupancy> PlanOccupancies(const Options& options, const Scale& scale, const std::vector<Asset>& assets,
                                       Staff& staff, Random random);

} // namespace velmora::demo
