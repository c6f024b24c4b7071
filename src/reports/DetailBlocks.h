#pragma once

#include "reports/ReportContext.h"

namespace velmora {

// What the daily report prints below a reservation. Each block reads what it prints before it prints anything, so that
// a block whose reading failed can be printed again. Failures are thrown; a missing record is a line of the report.

// Who reserved it and how to reach them; the optional codes under the captions that the dictionary gives them.
void PrintPersonBlock(ReportContext& context, const QString& lastName, const QString& firstName);

// The first guest extension booked with the reservation, under a heading of its own; nothing without one.
void PrintGuestExtension(ReportContext& context, qint32 reservation);

void PrintLocationBlock(ReportContext& context, qint16 asset);

// A heading and a paragraph per note; nothing without notes.
void PrintReservationNotes(ReportContext& context, qint32 reservation);

// The same blocks from records that were read before (see DetailRecords.h).
void PrintPerson(ReportContext& context, const engine::Recordset& person);
// `location` is null without a guest extension.
void PrintGuestLocation(ReportContext& context, const engine::Recordset* location);
void PrintLocation(ReportContext& context, const engine::Recordset& location);
void PrintNotes(ReportContext& context, engine::Recordset& notes);

} // namespace velmora
