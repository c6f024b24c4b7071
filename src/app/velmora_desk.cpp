// velmora-desk: the service desk with its windows.

#include "app/StandardStreams.h"
#include "app/desk/DeskProgram.h"
#include "base/windows/Look.h"

#include "platform/NativeUserSettings.h"

#include <QApplication>

namespace {

// What the user has chosen, else as the desktop is; some desktops do not tell.
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
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words += QString::fromLocal8Bit(argv[i]);
    }
    int ownName = 1;
    QApplication application(ownName, argv);
    QApplication::setApplicationName(QStringLiteral("velmora-desk"));
    QApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    velmora::ApplyLook(application, ChosenShade(application));
    velmora::desk::DeskProgram desk(words.join(u' '));
    desk.Start();
    return QApplication::exec();
}
