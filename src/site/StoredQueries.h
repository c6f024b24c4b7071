#pragma once

#include "engine/Database.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora {

struct StoredQueryText {
    QString name;
    QString text;
};

// The stored queries that the program comes with, in the program's dialect, in alphabetical order.
std::vector<StoredQueryText> StoredQueryTexts();

// How many texts of stored queries were ever shipped: grows with every text that is corrected or new. The first
// programs shipped one of each name and noted no revision.
int StoredQueryRevision();
inline constexpr int firstQueryRevision = 12;

// Adds those of the program's stored queries that a site does not have and that were first shipped after revision
// `from` and up to revision `to`. Returns their names.
QStringList AddMissingQueries(engine::Database& database, int from, int to);

// The names of the program's queries newer than `revision` that the site has given to a table or query of its own.
// Other queries of the program stand on them.
QStringList NamesTakenBySite(engine::Database& database, int revision);

// Replaces what a site has by the program's own text where the site has an earlier one of the program's, and leaves
// alone what the site has changed itself. Returns a sentence for each, for the log.
QStringList RenewQueries(engine::Database& database);

} // namespace velmora
