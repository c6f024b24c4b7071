#include "data/RepairSite.h"

#include "data/SiteSchema.h"
#include "engine/Database.h"

namespace velmora {

engine::RepairReport RepairSite(const QString& path, DateTime now) {
    engine::RepairReport report = engine::RepairDatabase(path, SiteSchemaText(), now);
    const auto database = OpenSite(path);
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
