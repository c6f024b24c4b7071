#include "base/windows/TranslateForm.h"

#include "base/Translate.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QTabBar>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

namespace velmora {

namespace {

// The mark is a single "&"; two stand for the letter itself.
QString WithoutMnemonic(QString caption) {
    for (qsizetype at = caption.indexOf(u'&'); at >= 0; at = caption.indexOf(u'&', at + 1)) {
        caption.remove(at, 1);
    }
    return caption;
}

QString Translated(const QString& caption) {
    QString found = Translate(caption);
    if (found != caption || !caption.contains(u'&')) {
        return found;
    }
    const QString plain = WithoutMnemonic(caption);
    const QString translated = Translate(plain);
    return translated == plain ? caption : translated;
}

void TranslateAction(QAction& action) {
    const QString tip = action.toolTip();
    action.setText(Translated(action.text()));
    action.setToolTip(Translated(tip));
}

void TranslateTabs(QTabBar& tabs) {
    for (int i = 0; i < tabs.count(); ++i) {
        tabs.setTabText(i, Translated(tabs.tabText(i)));
        tabs.setTabToolTip(i, Translated(tabs.tabToolTip(i)));
    }
}

// A toolbar's own buttons take their texts from its actions.
bool HasAction(const QAbstractButton& button) {
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    return tool != nullptr && tool->defaultAction() != nullptr;
}

void TranslateControl(QWidget& control) {
    if (auto* label = qobject_cast<QLabel*>(&control)) {
        label->setText(Translated(label->text()));
    } else if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        if (!HasAction(*button)) {
            button->setText(Translated(button->text()));
        }
    } else if (auto* frame = qobject_cast<QGroupBox*>(&control)) {
        frame->setTitle(Translated(frame->title()));
    } else if (auto* tabs = qobject_cast<QTabBar*>(&control)) {
        TranslateTabs(*tabs);
    } else if (auto* grid = qobject_cast<QTableView*>(&control)) {
        grid->setAccessibleName(Translated(grid->accessibleName()));
    } else if (qobject_cast<QToolBar*>(&control) != nullptr || qobject_cast<QMenu*>(&control) != nullptr) {
        for (QAction* action : control.actions()) {
            TranslateAction(*action);
        }
    }
}

} // namespace

void TranslateForm(QWidget& window) {
    window.setWindowTitle(Translated(window.windowTitle()));
    for (QWidget* control : window.findChildren<QWidget*>()) {
        TranslateControl(*control);
    }
}

} // namespace velmora
