#pragma once

#include "demo/Assets.h"
#include "demo/Persons.h"
#include "demo/Random.h"
#include "demo/ReservationWriter.h"
#include "demo/RowSink.h"
#include "demo/Scale.h"

#include <vector>

namespace velmora::demo {

// The rows of [Note], one to three for each reservation.
void WriteNotes(const Options& options, const std::vector<WrittenReservation>& reservations, const Staff& staff,
                Random random, RowSink& sink);

// The rows of [NoteCategory], [StandardNotes], [Event/StandardNote], [Asset/StandardNote] and [RequestNote].
void WriteStandardNotes(const Scale& scale, const std::vector<Asset>& assets, Random random, RowSink& sink);

} // namespace velmora::demo
