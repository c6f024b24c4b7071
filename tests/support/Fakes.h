#pragma once

#include "base/Program.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <map>

// Recording stand-ins for the services. A question that no test planned fails the test and ends the call with
// UnplannedQuestion, so that nothing is answered by accident.
namespace velmora::fakes {

struct UnplannedQuestion {};

class FakeDialogs : public Dialogs {
public:
    Answer ShowMessage(const Message& message) override {
        messages.push_back(message);
        if (onMessage) {
            onMessage(message);
        }
        return Next(answers, message.text);
    }
    std::optional<QString> AskText(const QString& prompt, const QString& title, const QString& initial) override {
        prompts.push_back({prompt, title, initial});
        return Next(texts, prompt);
    }
    std::optional<SaveFileAnswer> AskSaveFile(const SaveFileRequest& request) override {
        saveRequests.push_back(request);
        return Next(saveAnswers, request.title);
    }
    std::optional<FontChoice> AskFont(const FontChoice&) override { return Next(fonts, QStringLiteral("font")); }

    // What happens while a message is open.
    std::function<void(const Message&)> onMessage;
    // Planned answers, the first given first.
    std::deque<Answer> answers;
    std::deque<std::optional<QString>> texts;
    std::deque<std::optional<SaveFileAnswer>> saveAnswers;
    std::deque<std::optional<FontChoice>> fonts;
    // What was asked.
    std::vector<Message> messages;
    std::vector<std::array<QString, 3>> prompts;
    std::vector<SaveFileRequest> saveRequests;

private:
    template <typename T>
    static T Next(std::deque<T>& planned, const QString& question) {
        if (planned.empty()) {
            ADD_FAILURE() << "unplanned question: " << question.toStdString();
            throw UnplannedQuestion();
        }
        T answer = planned.front();
        planned.pop_front();
        return answer;
    }
};

class FakeClock : public Clock {
public:
    // Saturday, March 7, 2026, 2:15 PM.
    DateTime now = *MakeDateTime({2026, 3, 7, 14, 15, 0});
    DateTime Now() const override { return now; }
};

class FakeEventLoop : public EventLoop {
public:
    void ProcessPendingEvents() override {
        ++eventRounds;
        if (onEvents) {
            onEvents();
        }
    }
    void SetPointer(Pointer value) override {
        pointer = value;
        pointers.push_back(value);
    }
    void Beep() override { ++beeps; }
    void Wait(std::chrono::milliseconds duration) override { waited += duration; }

    std::function<void()> onEvents;
    int eventRounds = 0;
    int beeps = 0;
    Pointer pointer = Pointer::Default;
    std::vector<Pointer> pointers;
    std::chrono::milliseconds waited{0};
};

// Letter paper, all of it printable, at 600 dots per inch.
class FakePrinters : public Printers {
public:
    QStringList DeviceNames() const override { return names; }
    QString CurrentDevice() const override { return current; }
    void SelectDevice(const QString& deviceName) override { current = deviceName; }
    bool PrintsToFile() const override { return printsToFile; }
    PrinterFont CurrentFont() const override { return font; }
    void SetFontName(const QString& family) override { font.family = family; }
    void SetFont(const PrinterFont& value) override { font = value; }
    Orientation CurrentOrientation() const override { return orientation; }
    void SetOrientation(Orientation value) override { orientation = value; }
    PrinterPage CurrentPage() const override {
        PrinterPage turned = page;
        if (orientation == Orientation::Landscape) {
            std::swap(turned.paperWidth, turned.paperHeight);
            std::swap(turned.left, turned.top);
            std::swap(turned.width, turned.height);
        }
        return turned;
    }

    QStringList names;
    QString current;
    bool printsToFile = false;
    PrinterFont font;
    Orientation orientation = Orientation::Portrait;
    PrinterPage page{12240, 15840, 0, 0, 12240, 15840, 2.4};
};

class FakeProgressWindow : public ProgressWindow {
public:
    void Show(const QString& text, std::optional<double> percent) override { shown.emplace_back(text, percent); }
    std::vector<std::pair<QString, std::optional<double>>> shown;
};

class FakeMailWindow : public MailWindow {
public:
    void SendText(const QString& text) override { sent.push_back(text); }
    QStringList sent;
};

// Records reports and gives the planned answers; an unplanned report fails the test. Abort ends the program, as it does
// with the real one.
class FakeErrorReporter : public ErrorReporter {
public:
    struct Entry {
        Error error;
        FailurePlace place;
    };
    Answer Report(const Error& error, const FailurePlace& place) override {
        reports.push_back({error, place});
        if (answers.empty()) {
            ADD_FAILURE() << "unplanned error report: " << error.what();
            throw UnplannedQuestion();
        }
        const Answer answer = answers.front();
        answers.pop_front();
        if (answer == Answer::Abort) {
            throw StopProgram{1};
        }
        return answer;
    }
    std::deque<Answer> answers;
    std::vector<Entry> reports;
};

class FakeOpenWindows : public OpenWindows {
public:
    void UnloadAll() override { calls.push_back(QStringLiteral("all")); }
    void UnloadStartup() override { calls.push_back(QStringLiteral("startup")); }
    QStringList calls;
};

class FakeUserSettings : public UserSettings {
public:
    std::optional<QString> Read(const QString& application, const QString& section, const QString& key) const override {
        const auto found = values.find(application + u'/' + section + u'/' + key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Write(const QString& application, const QString& section, const QString& key, const QString& value) override {
        values[application + u'/' + section + u'/' + key] = value;
    }
    // By "application/section/key".
    std::map<QString, QString> values;
};

class FakeLog : public Log {
public:
    void Write(const QString& entry) noexcept override { entries.push_back(entry); }
    QStringList entries;
};

// A program made of fakes. `errors` may be replaced by the real reporter in tests of the reporter itself.
class TestProgram {
public:
    explicit TestProgram(ErrorReporter* errorReporter = nullptr, const QString& startupArgument = {})
        : program(Services{dialogs, clock, eventLoop, printers, progress, mail,
                           errorReporter != nullptr ? *errorReporter : errors, windows, userSettings, log,
                           QStringLiteral("/opt/velmora/bin/velmora-desk"), startupArgument, LocaleText(QLocale::c())},
                  QStringLiteral("Service Administration")),
          installer(program) {}

    FakeDialogs dialogs;
    FakeClock clock;
    FakeEventLoop eventLoop;
    FakePrinters printers;
    FakeProgressWindow progress;
    FakeMailWindow mail;
    FakeErrorReporter errors;
    FakeOpenWindows windows;
    FakeUserSettings userSettings;
    FakeLog log;
    Program program;
    ProgramInstaller installer;
};

} // namespace velmora::fakes
