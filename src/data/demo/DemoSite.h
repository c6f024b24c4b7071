#pragma once

#include "data/demo/RowSink.h"
#include "data/demo/Scale.h"

namespace velmora::demo {

// Gives the sink every row of a demo site: the same rows in the same order for the same options. Key columns that the
// store assigns are left to it.
void WriteDemoSite(const Options& options, RowSink& sink);

} // namespace velmora::demo
