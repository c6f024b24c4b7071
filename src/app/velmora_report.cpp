// velmora-report: prints a report without a window.

#include "app/StandardStreams.h"
#include "app/report/CommandLine.h"
#include "app/report/RunReport.h"

#include <QCoreApplication>

#include <cstdio>

namespace {
constexpr int badUsage = 2;
} // namespace

int main(int argc, char** argv) {
    velmora::PrepareStandardStreams();
    const QCoreApplication application(argc, argv);
    try {
        const auto command = velmora::report::ParseCommandLine(QCoreApplication::arguments().mid(1));
        if (command.help) {
            std::fputs(velmora::report::Usage().toUtf8().constData(), stdout);
            return 0;
        }
        return velmora::report::RunReport(command, QCoreApplication::applicationFilePath());
    } catch (const velmora::report::BadUsage& usage) {
        velmora::WriteStandardError(
            QStringLiteral("velmora-report: %1\nTry velmora-report --help.\n").arg(usage.reason));
        return badUsage;
    }
}
