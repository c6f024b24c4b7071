// velmora-desk: the service desk with its windows.

#include "app/StandardStreams.h"
#include "app/desk/DeskProgram.h"
#include "base/windows/Look.h"

#include <QApplication>

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
    velmora::ApplyLook(application, velmora::DesktopShade(application));
    velmora::desk::DeskProgram desk(words.join(u' '));
    desk.Start();
    return QApplication::exec();
}
