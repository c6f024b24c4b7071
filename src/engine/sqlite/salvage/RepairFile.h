#pragma once

#include "base/DateTime.h"
#include "engine/DatabasePlace.h"
#include "engine/RepairReport.h"
#include "engine/Schema.h"

namespace velmora::engine::salvage {

// Replaces the damaged database at that place by a new one with all rows that can still be read, in the tables and
// indexes of `schema`; tables, columns, indexes and views that the schema does not name come along. The new file is
// checked in full before it takes the old one's place, in one step: whatever happens, there is always one of the two.
// The damaged file stays beside it as "<name>.damaged-YYYYMMDD-HHMMSS" (the time is `now`); no earlier one is replaced.
//
// Throws RecordLocked while the database is in use, FileNotFound, CannotOpen (also for a database of
// another store, which is not repaired from here), NewerVersion (what a newer program has
// made is for that to repair), DiskFull, DiskError, and Damaged when there is nothing to be saved: an empty file, a
// file that is no database, or one with none of the schema's tables. On any failure the damaged file stays as it is,
// with nothing new beside it.
RepairReport Repair(const DatabasePlace& place, const Schema& schema, DateTime now);

} // namespace velmora::engine::salvage
