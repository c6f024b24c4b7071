#include "platform/UserName.h"

#ifdef Q_OS_UNIX
#include <array>
#include <pwd.h>
#include <unistd.h>
#endif

namespace velmora {

namespace {

// For a program that was not started from the person's own session, whose environment does not name the user.
QString NameOfAccount() {
#ifdef Q_OS_UNIX
    std::array<char, 16384> room{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, room.data(), room.size(), &found) == 0 && found != nullptr) {
        return QString::fromLocal8Bit(found->pw_name);
    }
#endif
    return {};
}

} // namespace

QString UserName() {
    for (const char* variable : {"USER", "USERNAME"}) {
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty()) {
            return name;
        }
    }
    return NameOfAccount();
}

} // namespace velmora
