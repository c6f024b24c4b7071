#pragma once

#include "data/AssetCollection.h"

namespace velmora {

// Fills the program's lookup lists, of which only the assets are kept, and shows its steps in the progress window with
// percentages of that range. The window stays open.
void LoadLookupLists(engine::Database& database, double startPercent = 0, double endPercent = 100);

// Fills Assets() from the database. Numbers without an asset get a placeholder named "Missing n"; an asset whose name
// is taken is named "ERROR n" in memory, and the person gets a message. Failures are reported with module "Internal
// Data" and procedure "Fill Asset Collection".
void FillAssetCollection(engine::Database& database);

} // namespace velmora
