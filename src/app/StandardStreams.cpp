#include "app/StandardStreams.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace velmora {

void PrepareStandardStreams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (::fcntl(stream, F_GETFD) == -1) {
            // Read-only behind standard output: writing there fails, as it should.
            ::open("/dev/null", stream == 2 ? O_WRONLY : O_RDONLY);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
}

void WriteStandardError(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

} // namespace velmora
