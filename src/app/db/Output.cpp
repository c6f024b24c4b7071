#include "app/db/Output.h"

#include "base/Error.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace velmora::db {

void Output::Flush() {
    qsizetype written = 0;
    while (written < buffer_.size()) {
        const ssize_t count =
            ::write(STDOUT_FILENO, buffer_.constData() + written, static_cast<size_t>(buffer_.size() - written));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            const int code = errno;
            buffer_.clear();
            throw ProgramError(
                code == ENOSPC ? ErrorNumber::DiskFull : ErrorNumber::FileAccess,
                QStringLiteral("Cannot write to standard output: %1").arg(QString::fromLocal8Bit(std::strerror(code))));
        }
        written += count;
    }
    buffer_.clear();
}

} // namespace velmora::db
