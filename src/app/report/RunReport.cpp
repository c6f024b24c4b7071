#include "app/report/RunReport.h"

#include "app/report/CommandLineSettings.h"
#include "app/report/OutputDelivery.h"
#include "base/Program.h"
#include "data/Configuration.h"
#include "desk/DailyReport.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"
#include "ops/SharedDatabase.h"
#include "ops/TranslationLoader.h"
#include "platform/ConsoleServices.h"
#include "platform/LogFile.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "print/ReadPrintAttributes.h"

namespace velmora::report {

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int stopped = 3;

// Nobody watches the report's progress.
class NoView : public ReportView {
public:
    void SetCloseCaption(const QString&) override {}
    void ShowProgress(const QString&, int) override {}
    void HideProgress() override {}
};

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
          log_(LogFile::DefaultPath(), *clock_), printers_(locale_.Locale()),
          settings_(storedSettings_, command.leaderStyle),
          program_({dialogs_, *clock_, eventLoop_, printers_, progress_, mail_, errors_, windows_, process_, settings_,
                    log_, executablePath, command.startupArgument, locale_},
                   u"Service Administration"_s),
          installer_(program_) {}

    Program& Get() { return program_; }

private:
    LocaleText locale_;
    std::unique_ptr<Clock> clock_;
    LogFile log_;
    ConsoleDialogs dialogs_{stderr};
    ErrorReport errors_{dialogs_, log_};
    ConsoleEventLoop eventLoop_;
    ConsolePrinters printers_;
    ConsoleProgress progress_;
    ConsoleMail mail_;
    ConsoleWindows windows_;
    ConsoleProcess process_;
    NativeUserSettings storedSettings_;
    CommandLineSettings settings_;
    Program program_;
    ProgramInstaller installer_;
};

int PrintReport(const Command& command, Program& program) {
    if (!command.dataDirectory.isEmpty()) {
        Settings().DataDirectory = command.dataDirectory;
    }
    if (const auto notice = HoldNotice()) {
        program.services().dialogs.ShowMessage({*notice, {}, Buttons::Ok, Icon::None});
        return stopped;
    }
    LoadTranslations();
    OpenSharedDatabase();
    engine::Database& database = OpenedDatabase();
    OutputDelivery delivery(command.output);
    print::PrintJob job({program.services(), delivery, [&] { return print::ReadPrintAttributes(database); }});
    DeskState state = command.state;
    state.optOrientation = command.orientation.value_or(program.services().printers.CurrentOrientation());
    job.SetOutputTarget(state.PrinterControl1.Destination);
    NoView view;
    ReportContext context{program, state, view, database, job};
    PrintDailyReport(context);
    return delivery.HasDelivered() ? 0 : failed;
}

} // namespace

int RunReport(const Command& command, const QString& executablePath) {
    ConsoleProgram console(command, executablePath);
    try {
        return PrintReport(command, console.Get());
    } catch (const ProgramEnd& end) {
        return end.exitCode;
    } catch (const std::exception&) {
        console.Get().services().dialogs.ShowMessage(
            {CurrentError().Description(), u"velmora-report"_s, Buttons::Ok, Icon::Critical});
        return failed;
    }
}

} // namespace velmora::report
