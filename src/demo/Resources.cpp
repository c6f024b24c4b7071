#include "demo/Resources.h"

#include <QtGlobal>

// Qt's macro declares a function and so cannot stand in a namespace. It keeps the resources of a static library in the
// program.
static void InitResources() {
    Q_INIT_RESOURCE(velmora_demo_share);
}

namespace velmora::demo {

void RegisterResources() {
    InitResources();
}

} // namespace velmora::demo
