#include "desk/windows/DeskWindows.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>

namespace velmora {

using namespace Qt::StringLiterals;

DeskWindows::DeskWindows() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool DeskWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* window = static_cast<QWidget*>(watched);
        const Qt::WindowType type = window->windowType();
        const bool counts = window->isWindow() && type != Qt::Popup && type != Qt::ToolTip;
        if (counts && std::ranges::find(opened_, window, &QPointer<QWidget>::data) == opened_.end()) {
            std::erase_if(opened_, [](const QPointer<QWidget>& gone) { return gone.isNull(); });
            opened_.emplace_back(window);
        }
    }
    return false;
}

void DeskWindows::Unload(QWidget& window) {
    // The main window asks whether it is its own user who closes it.
    window.setProperty("unloading", true);
    window.close();
    window.hide();
}

void DeskWindows::UnloadAll() {
    if (unloading_) {
        return;
    }
    unloading_ = true;
    while (!opened_.empty()) {
        const QPointer<QWidget> last = opened_.back();
        opened_.pop_back();
        if (last != nullptr) {
            Unload(*last);
        }
    }
    unloading_ = false;
}

void DeskWindows::UnloadStartup() {
    for (const QPointer<QWidget>& window : opened_) {
        if (window != nullptr && window->objectName() == u"frmIntro"_s) {
            Unload(*window);
            return;
        }
    }
}

} // namespace velmora
