#pragma once

#include "base/services/EventLoop.h"

namespace velmora {

// The event loop of a program with windows.
class WindowEventLoop : public EventLoop {
public:
    ~WindowEventLoop() override { WindowEventLoop::SetPointer(Pointer::Default); }
    void ProcessPendingEvents() override;
    void SetPointer(Pointer pointer) override;
    void Beep() override;
    void Wait(std::chrono::milliseconds duration) override;

private:
    Pointer pointer_ = Pointer::Default;
};

} // namespace velmora
