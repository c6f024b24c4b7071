#include "site/Site.h"

#include "site/NewFiles.h"
#include "site/Resource.h"
#include "site/SiteSchema.h"

#include <QDir>
#include <QFileInfo>

namespace velmora {

Site::Site(QString folder) : folder_(std::move(folder)) {
    if (!folder_.endsWith(u'/')) {
        folder_ += u'/';
    }
}

QString Site::Location() const {
    return File(QStringLiteral("Velmora.MDB"));
}

bool Site::Exists() const {
    return QFileInfo(Location()).isFile();
}

std::unique_ptr<engine::Database> Site::Open(const SiteOpening& opening) const {
    engine::OpenOptions options = SiteOptions();
    options.busyMilliseconds = opening.busyMilliseconds;
    options.now = opening.now;
    return engine::Database::Open(Location(), options);
}

engine::CheckResult Site::Check() const {
    return engine::CheckDatabase(Location(), SiteOptions());
}

bool Site::IsInUse() const {
    return engine::IsInUse(Location());
}

void Site::Create(const SiteContents& contents) const {
    NewFiles files;
    files.MakeFolder(folder_);
    engine::NewDatabase database(Location(), SiteSchemaText());
    engine::Loader queries =
        database.Load(QStringLiteral("StoredQuery"), {QStringLiteral("Name"), QStringLiteral("Text")});
    for (const StoredQueryText& query : StoredQueryTexts()) {
        queries.Add({query.name, query.text});
    }
    if (contents.addRows) {
        contents.addRows(database);
    }
    for (const auto& [name, content] : contents.files) {
        files.WriteUnlessThere(File(name), content);
    }
    const QString layouts = QStringLiteral("layouts");
    for (const QString& name : ResourceNames(layouts)) {
        files.WriteUnlessThere(File(name), ReadResourceBytes(layouts + u'/' + name));
    }
    database.Finish();
    files.Keep();
}

Site CreateSite(const QString& folder, const SiteContents& contents) {
    Site site(QDir(folder).path());
    site.Create(contents);
    return site;
}

engine::RepairReport Site::Repair(DateTime now) const {
    engine::RepairReport report = engine::RepairDatabase(Location(), SiteSchemaText(), now);
    const auto database = Open();
    const QStringList present = database->QueryNames();
    const auto queries = database->OpenRecordset(u"StoredQuery", engine::RecordsetKind::Updatable);
    for (const StoredQueryText& query : StoredQueryTexts()) {
        if (!present.contains(query.name, Qt::CaseInsensitive)) {
            queries->AddNew();
            queries->Set("Name", query.name);
            queries->Set("Text", query.text);
            queries->Update();
            report.remarks.append(
                QStringLiteral("The stored query %1 was lost; the program's own text took its place.").arg(query.name));
        }
    }
    return report;
}

} // namespace velmora
