// velmora-report: prints a report without a window.

#include "base/Program.h"

#include "app/StandardStreams.h"
#include "app/report/CommandLine.h"
#include "data/Configuration.h"
#include "data/NativePath.h"
#include "layouts/LayoutChoice.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"
#include "ops/SharedDatabase.h"
#include "ops/TranslationLoader.h"
#include "platform/ConsoleServices.h"
#include "platform/LogFile.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "runner/RunRequest.h"

#include <QGuiApplication>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int badUsage = 2;
constexpr int stopped = 3;

// Returns false, and reports it, when standard output did not take the text.
bool PrintText(const QString& text) {
    const bool taken = std::fputs(text.toUtf8().constData(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!taken) {
        WriteStandardError(u"velmora-report: Cannot write to standard output: %1\n"_s.arg(qt_error_string(errno)));
    }
    return taken;
}

// Prints the layout's file name, a TAB and the selection formula on standard output. Needs no program and no database.
bool ShowFormula(const LayoutRequest& request) {
    return PrintText(layouts::FindLayoutChoice(request.layout)->file.toString() + u'\t' +
                     layouts::SelectionFormula(request) + u'\n');
}

std::unique_ptr<Clock> MakeClock(const Command& command) {
    if (command.now) {
        return std::make_unique<FixedClock>(*command.now);
    }
    return std::make_unique<SystemClock>();
}

// The console program and the services it is made of, in the order in which they need each other.
class ConsoleProgram {
public:
    ConsoleProgram(const Command& command, const QString& executablePath)
        : locale_(command.locale.value_or(LocaleText(QLocale::system()))), clock_(MakeClock(command)),
          log_(LogFile::DefaultPath(), systemClock_), printers_(command.delivery, locale_.Locale()),
          settings_(storedSettings_, command.delivery.leaderStyle),
          program_({dialogs_, *clock_, eventLoop_, printers_, progress_, mail_, errors_, windows_, settings_, log_,
                    executablePath, command.startupArgument, locale_},
                   u"Service Administration"_s),
          installer_(program_) {}

    Program& Get() { return program_; }
    runner::ReportPrinters& Printers() { return printers_; }

private:
    LocaleText locale_;
    std::unique_ptr<Clock> clock_;
    // The log keeps the true time, whatever clock the report is given.
    SystemClock systemClock_;
    LogFile log_;
    ConsoleDialogs dialogs_{stderr};
    ErrorReport errors_{dialogs_, log_};
    ConsoleEventLoop eventLoop_;
    runner::ReportPrinters printers_;
    ConsoleProgress progress_;
    ConsoleMail mail_;
    ConsoleWindows windows_;
    NativeUserSettings storedSettings_;
    runner::DeliverySettings settings_;
    Program program_;
    ProgramInstaller installer_;
};

// Nobody is there to be asked whether a damaged file should be repaired: the message says how to.
void OpenDatabase(Program& program) {
    try {
        program.Part<SharedDatabase>().database = ConfiguredSite().Open(&program.services().log);
    } catch (const engine::EngineError& error) {
        if (error.Kind() == engine::EngineErrorNumber::Damaged) {
            program.services().dialogs.ShowMessage(
                {u"The database is damaged. Repair it with: velmora-db repair "_s + NativePath(DataDirectory()),
                 program.Title(), Buttons::Ok, Icon::Critical});
        }
        ReportError(error, {QString::number(error.Number()), {}, {}});
        throw StopProgram{failed};
    }
}

int Run(const Command& command, ConsoleProgram& console) {
    Program& program = console.Get();
    runner::ReportPrinters& printers = console.Printers();
    if (!command.dataDirectory.isEmpty()) {
        Settings().DataDirectory = command.dataDirectory;
    }
    if (const auto notice = HoldNotice()) {
        program.services().dialogs.ShowMessage({*notice, {}, Buttons::Ok, Icon::None});
        return stopped;
    }
    printers.Choose(command.delivery);
    LoadTranslations();
    OpenDatabase(program);
    return runner::RunUnattended(program, OpenedDatabase(), printers, command.delivery, command.request) ? 0 : failed;
}

// Prints the report. Returns the program's exit code.
int RunReport(const Command& command, const QString& executablePath) {
    if (command.showFormula) {
        return ShowFormula(std::get<LayoutRequest>(command.request)) ? 0 : failed;
    }
    ConsoleProgram console(command, executablePath);
    try {
        return Run(command, console);
    } catch (const StopProgram& stop) {
        return stop.exitCode;
    } catch (const std::exception&) {
        console.Get().services().dialogs.ShowMessage(
            {CurrentError().Description(), u"velmora-report"_s, Buttons::Ok, Icon::Critical});
        return failed;
    }
}

// Pages need fonts, which only a program with graphics has; it never needs a display for them.
std::unique_ptr<QCoreApplication> MakeApplication(const Command& command, int& argc, char** argv) {
    if (!command.delivery.ToPages()) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The toolkit's remarks about the session are of no use to who reads the report's errors.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fputs((text + u'\n').toUtf8().constData(), stderr);
        }
    });
    return std::make_unique<QGuiApplication>(argc, argv);
}

int Main(int argc, char** argv) {
    PrepareStandardStreams();
    try {
        const Command command = ParseCommandLine(ArgumentTexts(argc, argv));
        const auto application = MakeApplication(command, argc, argv);
        if (command.help) {
            return PrintText(Usage()) ? 0 : failed;
        }
        return RunReport(command, QCoreApplication::applicationFilePath());
    } catch (const BadUsage& usage) {
        WriteStandardError(QStringLiteral("velmora-report: %1\nTry velmora-report --help.\n").arg(usage.reason));
        return badUsage;
    }
}

} // namespace
} // namespace velmora::report

int main(int argc, char** argv) {
    return velmora::report::Main(argc, argv);
}
