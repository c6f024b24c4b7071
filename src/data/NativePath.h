#pragma once

#include <QString>

namespace velmora {

// Paths are kept as configured and joined with "\". Whatever touches the file system, or shows a path to a person,
// asks here for the form of this system: every "\" and "/" as its own separator.
inline QString NativePath(QString path) {
    return path.replace(u'\\', u'/');
}

} // namespace velmora
