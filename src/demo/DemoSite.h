#pragma once

#include "demo/House.h"
#include "site/Site.h"

namespace velmora::demo {

// Gives the sink every row of a demo site: the same rows in the same order for the same options. Key columns that the
// store assigns are left to it.
void WriteDemoSite(const Options& options, RowSink& sink);

// Makes a site as Site::Create does, with a demo site's rows and sample HTML wrapper files.
Site CreateDemoSite(const QString& folder, const Options& options);

} // namespace velmora::demo
