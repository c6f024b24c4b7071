#pragma once

#include "demo/Scale.h"
#include "site/Site.h"

namespace velmora::demo {

// Makes a site as Site::Create does, with a demo site's rows and sample HTML wrapper files.
Site CreateDemoSite(const QString& folder, const Options& options);

} // namespace velmora::demo
