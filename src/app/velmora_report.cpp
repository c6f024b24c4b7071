// velmora-report: prints a report without a window.

#include "app/report/CommandLine.h"
#include "app/report/RunReport.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int badUsage = 2;

// A standard stream that the caller closed is taken up, so that no file opened later becomes it. Writing to a standard
// output made this way fails, as it should.
void TakeUpClosedStreams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (::fcntl(stream, F_GETFD) == -1) {
            ::open("/dev/null", stream == 2 ? O_WRONLY : O_RDONLY);
        }
    }
}

void WriteText(std::FILE* out, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), out);
}

} // namespace

int main(int argc, char** argv) {
    TakeUpClosedStreams();
    // A reader that goes away and a file that may not grow are failed writes, told like any other.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    const QCoreApplication application(argc, argv);
    try {
        const auto command = velmora::report::ParseCommandLine(QCoreApplication::arguments().mid(1));
        if (command.help) {
            WriteText(stdout, velmora::report::Usage());
            return 0;
        }
        return velmora::report::RunReport(command, QCoreApplication::applicationFilePath());
    } catch (const velmora::report::BadUsage& usage) {
        WriteText(stderr, QStringLiteral("velmora-report: %1\nTry velmora-report --help.\n").arg(usage.reason));
        return badUsage;
    }
}
