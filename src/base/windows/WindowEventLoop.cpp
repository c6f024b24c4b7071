#include "base/windows/WindowEventLoop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>

namespace velmora {

void WindowEventLoop::ProcessPendingEvents() {
    // Asking the desktop costs more than the rows of a fast report.
    constexpr qint64 interval = 20;
    if (lastRound_.isValid() && lastRound_.elapsed() < interval) {
        return;
    }
    QApplication::processEvents();
    lastRound_.start();
}

void WindowEventLoop::SetPointer(Pointer pointer) {
    if (pointer == pointer_) {
        return;
    }
    pointer_ = pointer;
    if (pointer == Pointer::Hourglass) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void WindowEventLoop::Beep() {
    QApplication::beep();
}

void WindowEventLoop::Wait(std::chrono::milliseconds duration) {
    QElapsedTimer timer;
    timer.start();
    constexpr int slice = 20;
    do {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const qint64 left = duration.count() - timer.elapsed();
        QThread::msleep(static_cast<unsigned long>(std::clamp<qint64>(left, 0, slice)));
    } while (timer.elapsed() < duration.count());
}

} // namespace velmora
