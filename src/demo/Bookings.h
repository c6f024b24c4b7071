#pragma once

#include "demo/Assets.h"
#include "demo/Occupancies.h"
#include "demo/Persons.h"
#include "demo/Random.h"
#include "demo/ReservationWriter.h"
#include "demo/Scale.h"

#include <vector>

namespace velmora::demo {

// Writes all reservations of a site through `writer`: the occupancies given, and what people booked day by day until
// the scale's number is reached.
void WriteReservations(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
                       const std::vector<Occupancy>& occupancies, Random random, ReservationWriter& writer);

} // namespace velmora::demo
