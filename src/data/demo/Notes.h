#pragma once

#include "data/demo/Assets.h"
#include "data/demo/Persons.h"
#include "data/demo/Random.h"
#include "data/demo/ReservationWriter.h"
#include "data/demo/RowSink.h"
#include "data/demo/Scale.h"

#include <vector>

namespace velmora::demo {

// The rows of [Note], one to three for each reservation.
void WriteNotes(const Options& options, const std::vector<WrittenReservation>& reservations, const Staff& staff,
                Random random, RowSink& sink);

// The rows of [NoteCategory], [StandardNotes], [Event/StandardNote], [Asset/StandardNote] and [RequestNote].
void WriteStandardNotes(const Scale& scale, const std::vector<Asset>& assets, Random random, RowSink& sink);

} // namespace velmora::demo
