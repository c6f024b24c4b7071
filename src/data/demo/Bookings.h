#pragma once

#include "data/demo/Assets.h"
#include "data/demo/Occupancies.h"
#include "data/demo/Persons.h"
#include "data/demo/Random.h"
#include "data/demo/ReservationWriter.h"
#include "data/demo/Scale.h"

#include <vector>

namespace velmora::demo {

// Writes all reservations of a site through `writer`: the occupancies given, and what people booked day by day until
// the scale's number is reached.
void WriteReservations(const Options& options, const Scale& scale, const std::vector<Asset>& assets, const Staff& staff,
                       const std::vector<Occupancy>& occupancies, Random random, ReservationWriter& writer);

} // namespace velmora::demo
