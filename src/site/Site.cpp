#include "site/Site.h"

#include "engine/Stores.h"
#include "site/NewFiles.h"
#include "site/Resource.h"
#include "site/SiteSchema.h"
#include "site/SiteVersion.h"
#include "site/StoredQueries.h"

#include <QDir>

#include <algorithm>

namespace velmora {

Site::Site(QString folder) : folder_(std::move(folder)) {
    if (!folder_.endsWith(u'/')) {
        folder_ += u'/';
    }
}

QString Site::Location() const {
    return engine::PlaceIn(folder_)->Location();
}

bool Site::Exists() const {
    return engine::PlaceIn(folder_)->Exists();
}

std::unique_ptr<engine::Database> Site::Open(const SiteOpening& opening) const {
    engine::OpenOptions options{
        .schema = SiteSchema(), .busyMilliseconds = opening.busyMilliseconds, .now = opening.now};
    const auto place = engine::PlaceIn(folder_);
    auto database = place->Open(options);
    if (IsOutdated(*database)) {
        // Whoever only reads does not wait for another's lock here: the next opening tries again.
        options.busyMilliseconds = std::min(options.busyMilliseconds, 200);
        const QString account = BringUpToDate(*place->Open(options));
        if (opening.log != nullptr && !account.isEmpty()) {
            opening.log->Write(account);
        }
        database->Idle(engine::IdleOption::RefreshCache);
    }
    return database;
}

engine::CheckResult Site::Check() const {
    return engine::PlaceIn(folder_)->Check({.schema = SiteSchema()});
}

bool Site::IsInUse() const {
    return engine::PlaceIn(folder_)->IsInUse();
}

void Site::Create(const SiteContents& contents) const {
    NewFiles files;
    files.MakeFolder(folder_);
    const auto database = engine::PlaceIn(folder_)->Create(SiteSchema());
    WriteSiteVersion(*database);
    const auto queries =
        database->Load(QStringLiteral("StoredQuery"), {QStringLiteral("Name"), QStringLiteral("Text")});
    for (const StoredQueryText& query : StoredQueryTexts()) {
        queries->Add({query.name, query.text});
    }
    if (contents.addRows) {
        contents.addRows(*database);
    }
    for (const auto& [name, content] : contents.files) {
        files.WriteUnlessThere(File(name), content);
    }
    const QString layouts = QStringLiteral("layouts");
    for (const QString& name : ResourceNames(layouts)) {
        files.WriteUnlessThere(File(name), ReadResourceBytes(layouts + u'/' + name));
    }
    database->Finish();
    files.Keep();
}

Site CreateSite(const QString& folder, const SiteContents& contents) {
    Site site(QDir(folder).path());
    site.Create(contents);
    return site;
}

} // namespace velmora
