#pragma once

#include <QString>

namespace velmora {

// The name by which the person signed on to this machine; empty where the machine knows none.
QString UserName();

} // namespace velmora
