#pragma once

#include "engine/Database.h"
#include "engine/NewDatabase.h"

#include <QString>

#include <optional>

namespace velmora {

// Gives a new database the version of the program's schema.
void WriteSiteVersion(engine::NewDatabase& database);

// Whether an older program has made it, and no program of this version has brought it up to date yet.
bool IsOutdated(engine::Database& database);

// Gives a database that an older program has made the tables and stored queries of this one, in one transaction. Where
// nobody may change it, or the step fails, it stays as it is, and the program works with what is there. Returns what
// was done, or why it was not, for the log; empty when nothing was to be done.
QString BringUpToDate(engine::Database& database);

// Adds those of the program's stored queries that a database of this age came with and does not have any more. Returns
// their names.
QStringList PutBackLostQueries(engine::Database& database);

// Why tables of the program's are not in the database, as a sentence; none when it is up to date.
std::optional<QString> WhyOutdated(engine::Database& database);

} // namespace velmora
