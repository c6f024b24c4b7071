#pragma once

#include "engine/Repair.h"

namespace velmora {

// Repairs a site's database, and puts back those of the program's own stored queries that the damage took: without
// them reports would not run. A query that is still there stays as the site has it. Throws as engine::RepairDatabase.
engine::RepairReport RepairSite(const QString& path, DateTime now);

} // namespace velmora
