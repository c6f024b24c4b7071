#pragma once

#include "engine/NewDatabase.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace velmora {

// What a new site gets beside its stored queries and report layouts.
struct SiteContent {
    std::function<void(engine::NewDatabase&)> addRows;
    QStringList files; // compiled into the program, by their paths below share/
};

// Makes a site in a folder, which is made too: "Velmora.MDB" with its stored queries, the report layouts and `content`.
// Files that are there already stay as they are. Returns the database's path.
//
// Throws EngineError (FileExists when the folder has a database already) and Error for what the file system refuses;
// nothing is left behind then.
QString CreateSite(const QString& folder, const SiteContent& content = {});

// The path of the database in a folder.
QString SiteDatabasePath(const QString& folder);

} // namespace velmora
