#pragma once

#include "demo/Scale.h"

namespace velmora::demo {

// Makes a site as CreateSite does, with a demo site's rows and sample HTML wrapper files. Returns the database's path;
// throws as CreateSite.
QString CreateDemoSite(const QString& folder, const Options& options);

} // namespace velmora::demo
