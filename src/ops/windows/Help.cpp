#include "ops/windows/Help.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "ops/windows/frmHelp.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

frmHelp* OpenHelp() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<frmHelp*>(window); help != nullptr && help->isVisible()) {
            return help;
        }
    }
    return nullptr;
}

} // namespace

void ShowHelp(const QString& topic) {
    Program& program = CurrentProgram();
    const QString path = program.Part<HelpFile>().path;
    frmHelp* help = OpenHelp();
    // While a dialog is open, only its child windows can be used.
    QWidget* dialog = QApplication::activeModalWidget();
    if (help != nullptr && dialog != nullptr && help->parentWidget() != dialog) {
        help->close();
        help = nullptr;
    }
    if (help == nullptr) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            program.services().dialogs.ShowMessage(
                {Translate(u"The help file \"%1\" cannot be read: %2. Set the key \"Help\" in section \"Files\" of "
                           "Velmora.INI to its folder."_s)
                     .arg(path, file.errorString()),
                 program.Title(), Buttons::Ok, Icon::Exclamation});
            return;
        }
        help = new frmHelp(QString::fromUtf8(file.readAll()), dialog);
    }
    help->ShowTopic(topic);
}

HelpKey::HelpKey(std::function<QString()> topic) : topic_(std::move(topic)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    // The window itself gets the key before any of its controls.
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
        return false;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) {
        return false;
    }
    ShowHelp(topic_());
    return true;
}

} // namespace velmora
