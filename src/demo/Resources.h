#pragma once

namespace velmora::demo {

// Makes share/demo readable as ReadResource("demo/..."). May be called again.
void RegisterResources();

} // namespace velmora::demo
