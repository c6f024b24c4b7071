#pragma once

#include "base/Program.h"

#include <cstdio>

// The services of a program without windows: nobody is there to be asked, so every question gets the answer that
// changes nothing, and what a person would read goes to standard error.
namespace velmora {

class ConsoleDialogs : public Dialogs {
public:
    explicit ConsoleDialogs(std::FILE* out) : out_(out) {}
    // Writes the text; answers OK, Abort, Cancel or No.
    Answer ShowMessage(const Message& message) override;
    std::optional<QString> AskText(const QString&, const QString&, const QString&) override { return std::nullopt; }
    std::optional<SaveFileAnswer> AskSaveFile(const SaveFileRequest&) override { return std::nullopt; }
    std::optional<FontChoice> AskFont(const FontChoice&) override { return std::nullopt; }

private:
    std::FILE* out_;
};

class ConsoleEventLoop : public EventLoop {
public:
    void ProcessPendingEvents() override {}
    void SetPointer(Pointer) override {}
    void Beep() override {}
    void Wait(std::chrono::milliseconds duration) override;
};

class ConsoleProgress : public ProgressWindow {
public:
    void Show(const QString&, std::optional<double>) override {}
};

// Hands nothing over: this program has no mail service.
class ConsoleMail : public MailWindow {
public:
    void SendText(const QString& text) override;
};

class ConsoleWindows : public OpenWindows {
public:
    void UnloadAll() override {}
    void UnloadStartup() override {}
};

} // namespace velmora
