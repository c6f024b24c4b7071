#include "tests/support/Folders.h"

namespace velmora {

QString ShareFolder() {
    return QStringLiteral(VELMORA_SHARE);
}

QString TestDataFolder() {
    return QStringLiteral(VELMORA_TEST_DATA);
}

} // namespace velmora
