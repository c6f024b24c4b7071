#pragma once

#include "engine/Database.h"
#include "notes/BoundRows.h"

#include <optional>
#include <vector>

namespace velmora {

std::vector<BoundColumn> StandardNoteColumns();

// A list of standard notes to choose from.
struct StandardNoteList {
    // Of the window that shows it.
    QString title;
    QString source;
};

// The standard notes of an asset (mode "1", `key` its number) or of an event type (mode "2", `key` its name); none for
// any other mode.
std::optional<StandardNoteList> FindStandardNoteList(const QString& mode, const QString& key);

// What a reservation's standard notes are found by: for mode "1" its asset's number, for mode "2" its event type. A
// reservation without one, or one that is gone, has a key that no standard note has.
QString StandardNoteKeyOf(engine::Database& database, qint32 reservation, const QString& mode);

// Adds the standard note of that name to the reservation's notes, with its category, text and cost. Throws Error when
// another desk deleted it meanwhile. Several are added as one inside a transaction of the caller's.
void AddStandardNote(engine::Database& database, qint32 reservation, const QString& name);

} // namespace velmora
