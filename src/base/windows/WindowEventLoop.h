#pragma once

#include "base/services/EventLoop.h"

#include <QElapsedTimer>

namespace velmora {

// The event loop of a program with windows. Pending events are handled fifty times a second at most: a call that
// comes sooner after the last leaves them to the next one.
class WindowEventLoop : public EventLoop {
public:
    WindowEventLoop() = default;
    ~WindowEventLoop() override { WindowEventLoop::SetPointer(Pointer::Default); }
    WindowEventLoop(const WindowEventLoop&) = delete;
    WindowEventLoop& operator=(const WindowEventLoop&) = delete;
    void ProcessPendingEvents() override;
    void SetPointer(Pointer pointer) override;
    void Beep() override;
    void Wait(std::chrono::milliseconds duration) override;

private:
    Pointer pointer_ = Pointer::Default;
    QElapsedTimer lastRound_;
};

} // namespace velmora
