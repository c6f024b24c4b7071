#include "engine/Stores.h"
#include "engine/sqlite/salvage/RepairFile.h"
#include "site/Site.h"
#include "site/SiteSchema.h"
#include "site/SiteVersion.h"

namespace velmora {

// In a file of its own: programs that do not repair need not link what it takes.
engine::RepairReport Site::Repair(DateTime now) const {
    const auto store = engine::PlaceIn(folder_);
    const engine::Schema schema = SiteSchema();
    engine::RepairReport report = engine::salvage::Repair(*store, schema, now);
    const auto database = store->Open({.schema = schema});
    for (const QString& name : PutBackLostQueries(*database)) {
        report.remarks.append(
            QStringLiteral("The stored query %1 was lost; the program's own text took its place.").arg(name));
    }
    if (const QString account = BringUpToDate(*database); !account.isEmpty()) {
        report.remarks += account.split(u'\n');
    }
    return report;
}

} // namespace velmora
