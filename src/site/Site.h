#pragma once

#include "base/services/Log.h"
#include "engine/DatabasePlace.h"
#include "engine/RepairReport.h"

#include <QString>

#include <functional>
#include <map>
#include <memory>

namespace velmora {

// What a new site holds beside its stored queries and report layouts.
struct SiteContents {
    // Fills tables other than StoredQuery; may be empty.
    std::function<void(engine::NewDatabase&)> addRows{};
    // By the names of the files.
    std::map<QString, QByteArray> files{};
};

// A site: a folder with the shared database, the hold file, the report layouts and the sample wrapper files. Where and
// in what kind of store the database lies is known here and nowhere above.
class Site {
public:
    // `folder` is a native path; without a separator at its end one is added.
    explicit Site(QString folder);

    // The native path of a file of the site.
    QString File(const QString& name) const { return folder_ + name; }
    // Where the database is, as people are shown it.
    QString Location() const;

    bool Exists() const;
    // Brings a database that an older program has made up to date where it may (site/SiteVersion.h). Throws as
    // engine::DatabasePlace::Open. The log, which may be null, takes what is to be known about the opening.
    std::unique_ptr<engine::Database> Open(Log* log = nullptr) const;
    // These throw as those of engine::DatabasePlace.
    engine::CheckResult Check() const;
    bool IsInUse() const;

    // Makes the folder, the database with its stored queries and the report layouts. Files that are there already stay
    // as they are. Throws EngineError (FileExists when the site has a database) and Error for what the file system
    // refuses; nothing is left behind then.
    void Create(const SiteContents& contents = {}) const;
    // Replaces a damaged database by what can be saved of it, and puts back those of the program's own stored queries
    // that the damage took: without them reports would not run. A query that is still there stays as the site has it.
    // Throws as engine::salvage::Repair.
    engine::RepairReport Repair(DateTime now) const;

private:
    QString folder_; // ends in a separator
};

// Makes a site in that folder, as Site::Create does.
Site CreateSite(const QString& folder, const SiteContents& contents = {});

} // namespace velmora
