#pragma once

#include "base/LocaleText.h"
#include "base/services/Clock.h"
#include "base/services/Dialogs.h"
#include "base/services/ErrorReporter.h"
#include "base/services/Log.h"
#include "base/services/Mail.h"
#include "base/services/Printers.h"
#include "base/services/UserInterface.h"
#include "base/services/UserSettings.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace velmora {

// The services that a program is made of. They outlive the Program built on them.
struct Services {
    Dialogs& dialogs;
    Clock& clock;
    EventLoop& eventLoop;
    Printers& printers;
    ProgressWindow& progress;
    MailWindow& mail;
    ErrorReporter& errors;
    OpenWindows& windows;
    UserSettings& userSettings;
    Log& log;
    // The program's place in the file system, native form: the executable with its folder.
    QString executablePath;
    // What follows the program's name on its command line, as given.
    QString startupArgument;
    LocaleText localeText;
};

// One running program: its services, and the process-wide objects that the layers above keep for its life.
class Program {
public:
    // `title` is the application's title in message boxes.
    Program(Services services, QString title);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    const Services& services() const { return services_; }
    const QString& Title() const { return title_; }

    // The program's one object of type T, made on first use and kept until the program ends; the last made is
    // destroyed first.
    template <typename T>
    T& Part() {
        static constexpr char tag = 0;
        if (void* known = FindPart(&tag)) {
            return *static_cast<T*>(known);
        }
        auto part = std::make_shared<T>();
        T& result = *part;
        AddPart(&tag, std::move(part));
        return result;
    }

private:
    void* FindPart(const char* tag) const;
    void AddPart(const char* tag, std::shared_ptr<void> part);

    Services services_;
    QString title_;
    std::vector<std::pair<const char*, std::shared_ptr<void>>> parts_;
};

// Makes a program the current one while it lives. A second install while one is in force throws std::logic_error.
class ProgramInstaller {
public:
    explicit ProgramInstaller(Program& program);
    ~ProgramInstaller();
    ProgramInstaller(const ProgramInstaller&) = delete;
    ProgramInstaller& operator=(const ProgramInstaller&) = delete;
};

// The current program, for procedures of fixed name that take no context. Throws std::logic_error without one.
Program& CurrentProgram();
// The same, or null.
Program* CurrentProgramOrNull();

} // namespace velmora
