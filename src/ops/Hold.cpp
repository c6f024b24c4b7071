#include "ops/Hold.h"

#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/Helpers.h"
#include "data/NativePath.h"

namespace velmora {

std::optional<QString> HoldNotice() {
    const QString database = DatabasePath();
    if (!FileExists(database)) {
        return QStringLiteral("Database ") + NativePath(database) +
               QStringLiteral(" cannot be found. Velmora will shut down.");
    }
    const QString holdFile = DataDirectory() + QStringLiteral("\\HOLD.TXT");
    if (FileExists(holdFile)) {
        return Translate(QStringLiteral("Administrative Hold Placed For:")) + QStringLiteral("\r\n") +
               ReadFileText(holdFile) + QStringLiteral(" Velmora will shut down.");
    }
    return std::nullopt;
}

} // namespace velmora
