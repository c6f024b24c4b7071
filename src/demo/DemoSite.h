#pragma once

#include "demo/RowSink.h"
#include "demo/Scale.h"

namespace velmora::demo {

// Gives the sink every row of a demo site: the same rows in the same order for the same options. Key columns that the
// store assigns are left to it.
void WriteDemoSite(const Options& options, RowSink& sink);

} // namespace velmora::demo
