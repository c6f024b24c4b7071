#include "platform/UserName.h"

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

namespace velmora {

QString UserName() {
    for (const char* variable : {"USER", "USERNAME"}) {
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty()) {
            return name;
        }
    }
#ifdef Q_OS_UNIX
    // For a program that was not started from the person's own session, whose environment does not name the user.
    if (const passwd* account = getpwuid(getuid())) {
        return QString::fromLocal8Bit(account->pw_name);
    }
#endif
    return {};
}

} // namespace velmora
