#include "data/NativePath.h"

namespace velmora {

QString NativePath(QString path) {
    return path.replace(u'\\', u'/');
}

} // namespace velmora
