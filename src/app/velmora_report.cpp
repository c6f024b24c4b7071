// velmora-report: prints a report without a window.

#include "app/StandardStreams.h"
#include "app/report/CommandLine.h"
#include "app/report/RunReport.h"

#include <QGuiApplication>

#include <cstdio>
#include <memory>

namespace {

constexpr int badUsage = 2;

QStringList ArgumentTexts(int argc, char** argv) {
    QStringList texts;
    for (int i = 1; i < argc; ++i) {
        texts += QString::fromLocal8Bit(argv[i]);
    }
    return texts;
}

// Pages need fonts, which only a program with graphics has; it never needs a display for them.
std::unique_ptr<QCoreApplication> MakeApplication(const velmora::report::Command& command, int& argc, char** argv) {
    if (!command.delivery.ToPages()) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The toolkit's remarks about the session are of no use to who reads the report's errors.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fputs((text + u'\n').toUtf8().constData(), stderr);
        }
    });
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    velmora::PrepareStandardStreams();
    try {
        const auto command = velmora::report::ParseCommandLine(ArgumentTexts(argc, argv));
        const auto application = MakeApplication(command, argc, argv);
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
