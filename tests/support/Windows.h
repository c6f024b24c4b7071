#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <stdexcept>

namespace velmora {

template <typename T = QWidget>
T& Child(const QWidget& window, const QString& name) {
    auto* child = window.findChild<T*>(name);
    if (child == nullptr) {
        throw std::logic_error("no control named " + name.toStdString());
    }
    return *child;
}

// Does something with the modal window of that type once it is there.
template <typename Window, typename Work>
void Then(Work work) {
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [timer, work] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (window != nullptr && window->isActiveWindow()) {
            timer->stop();
            timer->deleteLater();
            work(*window);
        }
    });
    timer->start(5);
}

} // namespace velmora
