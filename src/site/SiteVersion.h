#pragma once

#include "base/services/Log.h"
#include "engine/Database.h"
#include "engine/NewDatabase.h"

#include <QString>

#include <optional>

namespace velmora {

// Gives a new database the version of the program's schema.
void WriteSiteVersion(engine::NewDatabase& database);

// Gives a database that an older program has made the tables and stored queries of this one, in one transaction, and
// says so in the log, which may be null. What nobody may change stays as it is, and so does the database where the step
// fails: the log says why, and the program works with what is there.
void BringUpToDate(engine::Database& database, Log* log);

// Why tables of the program's are not in the database, as a sentence; none when it is up to date.
std::optional<QString> WhyOutdated(engine::Database& database);

} // namespace velmora
