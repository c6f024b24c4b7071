#pragma once

#include "data/demo/Scale.h"

#include <QString>

#include <optional>

namespace velmora {

// Makes a site in a folder, which is made too: "Velmora.MDB" with its stored queries, and the report layouts; with
// `demo` also that demo site's rows and sample HTML wrapper files. Layouts and wrapper files that are there already
// stay as they are. Returns the database's path.
//
// Throws EngineError (FileExists when the folder has a database already) and Error for what the file system refuses;
// nothing is left behind then.
QString CreateSite(const QString& folder, const std::optional<demo::Options>& demo);

// The path of the database in a folder.
QString SiteDatabasePath(const QString& folder);

} // namespace velmora
