#pragma once

#include "base/services/Dialogs.h"
#include "base/services/UserInterface.h"

#include <QElapsedTimer>
#include <QFont>

namespace velmora {

// Questions in windows of their own, in front of the window in use.
class WindowDialogs : public Dialogs {
public:
    Answer ShowMessage(const Message& message) override;
    std::optional<QString> AskText(const QString& prompt, const QString& title, const QString& initial) override;
    std::optional<SaveFileAnswer> AskSaveFile(const SaveFileRequest& request) override;
    std::optional<FontChoice> AskFont(const FontChoice& initial) override;
};

QFont ToFont(const FontChoice& choice);
FontChoice ToFontChoice(const QFont& font);

// "Text file (*.txt)|*.txt" as the toolkit's dialogs want it: "Text file (*.txt)", several separated by ";;".
QString NameFilters(const QString& filter);

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
