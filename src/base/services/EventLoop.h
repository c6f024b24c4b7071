#pragma once

#include <chrono>

namespace velmora {

enum class Pointer { Default, Hourglass };

// The user-interface thread's event loop, as long work sees it.
class EventLoop {
public:
    virtual ~EventLoop() = default;
    // Handles what is pending, clicks included, and returns.
    virtual void ProcessPendingEvents() = 0;
    virtual void SetPointer(Pointer pointer) = 0;
    virtual void Beep() = 0;
    // Waits at least that long and keeps windows painted; takes no input meanwhile.
    virtual void Wait(std::chrono::milliseconds duration) = 0;
};

// Shows the hourglass while it lives.
class BusyPointer {
public:
    explicit BusyPointer(EventLoop& loop) : loop_(loop) { loop_.SetPointer(Pointer::Hourglass); }
    ~BusyPointer() { loop_.SetPointer(Pointer::Default); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    EventLoop& loop_;
};

} // namespace velmora
