// velmora-desk: the service desk with its windows.

#include "app/StandardStreams.h"
#include "app/desk/DeskProgram.h"
#include "base/windows/Look.h"

#include "platform/NativeUserSettings.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace {

// Ends the process when a handler throws StopProgram, once what the handler did itself is left. Below the handler there
// may stand a report, a question and the toolkit's event loops. None of them can go on without windows and database,
// and no exception may pass through an event loop. The one who threw has unloaded the windows and closed the database.
class DeskApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const velmora::StopProgram& stop) {
            std::fflush(nullptr);
            std::_Exit(stop.exitCode);
        }
    }
};

// What the user has chosen, else as the desktop is; some desktops do not say.
velmora::Shade ChosenShade(const QApplication& application) {
    const velmora::NativeUserSettings settings;
    const auto chosen =
        settings.Read(QStringLiteral("Velmora"), QStringLiteral("Look"), QStringLiteral("Shade")).value_or(QString());
    if (chosen.compare(QStringLiteral("dark"), Qt::CaseInsensitive) == 0) {
        return velmora::Shade::Dark;
    }
    return chosen.compare(QStringLiteral("light"), Qt::CaseInsensitive) == 0 ? velmora::Shade::Light
                                                                             : velmora::DesktopShade(application);
}

} // namespace

int main(int argc, char** argv) {
    velmora::PrepareStandardStreams();
    // Everything behind the program's name is the start-up argument; none of it is for the toolkit.
    const QString startupArgument = velmora::ArgumentTexts(argc, argv).join(u' ');
    int ownName = 1;
    DeskApplication application(ownName, argv);
    QApplication::setApplicationName(QStringLiteral("velmora-desk"));
    QApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    velmora::ApplyLook(application, ChosenShade(application));
    velmora::desk::DeskProgram desk(startupArgument);
    try {
        desk.Start();
    } catch (const velmora::StopProgram& stop) {
        return stop.exitCode;
    }
    return QApplication::exec();
}
