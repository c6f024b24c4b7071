#pragma once

#include <QString>

#include <chrono>
#include <optional>

// The user interface as work sees it that has no window of its own.
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

// The small window that shows one line of status text and, when a percentage (0 to 100) is given, a bar.
class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    // An empty text hides the window.
    virtual void Show(const QString& text, std::optional<double> percent) = 0;
};

// The windows that are open.
class OpenWindows {
public:
    virtual ~OpenWindows() = default;
    // Unloads every window, the last opened first; goes on when one cannot be unloaded.
    virtual void UnloadAll() = 0;
    // Unloads the start-up window alone, when it is there.
    virtual void UnloadStartup() = 0;
};

} // namespace velmora
