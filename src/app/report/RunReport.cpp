#include "app/report/RunReport.h"

#include "app/report/CommandLineSettings.h"
#include "app/report/OutputDelivery.h"
#include "app/report/ReportPrinters.h"
#include "app/report/RunLayout.h"
#include "base/Program.h"
#include "data/Configuration.h"
#include "data/NativePath.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"
#include "ops/SharedDatabase.h"
#include "ops/SmtpMail.h"
#include "ops/TranslationLoader.h"
#include "platform/ConsoleServices.h"
#include "platform/LogFile.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "print/ReadPrintAttributes.h"
#include "print/pages/PageWriters.h"
#include "reports/PrintReport.h"

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
          log_(LogFile::DefaultPath(), systemClock_), printers_(command, locale_.Locale()),
          settings_(storedSettings_, command.delivery.leaderStyle),
          program_({dialogs_, *clock_, eventLoop_, printers_, progress_, mail_, errors_, windows_, process_, settings_,
                    log_, executablePath, command.startupArgument, locale_},
                   u"Service Administration"_s),
          installer_(program_) {}

    Program& Get() { return program_; }
    ReportPrinters& Printers() { return printers_; }

private:
    LocaleText locale_;
    std::unique_ptr<Clock> clock_;
    // The log keeps the true time, whatever clock the report is given.
    SystemClock systemClock_;
    LogFile log_;
    ConsoleDialogs dialogs_{stderr};
    ErrorReport errors_{dialogs_, log_};
    ConsoleEventLoop eventLoop_;
    ReportPrinters printers_;
    ConsoleProgress progress_;
    ConsoleMail mail_;
    ConsoleWindows windows_;
    ConsoleProcess process_;
    NativeUserSettings storedSettings_;
    CommandLineSettings settings_;
    Program program_;
    ProgramInstaller installer_;
};

// Nobody is there to be asked whether a damaged file should be repaired: the reason and the way out are told.
void OpenDatabase(Program& program) {
    try {
        program.Part<SharedDatabase>().database = ConfiguredSite().Open({.log = &program.services().log});
    } catch (const engine::EngineError& error) {
        if (error.Kind() == engine::EngineErrorNumber::Damaged) {
            program.services().dialogs.ShowMessage(
                {u"The database is damaged. Repair it with: velmora-db repair "_s + NativePath(DataDirectory()),
                 program.Title(), Buttons::Ok, Icon::Critical});
        }
        ReportError(error, {QString::number(error.Number()), {}, {}});
        program.services().process.End(failed);
    }
}

int Run(const Command& command, ConsoleProgram& console) {
    Program& program = console.Get();
    ReportPrinters& printers = console.Printers();
    if (!command.dataDirectory.isEmpty()) {
        Settings().DataDirectory = command.dataDirectory;
    }
    if (const auto notice = HoldNotice()) {
        program.services().dialogs.ShowMessage({*notice, {}, Buttons::Ok, Icon::None});
        return stopped;
    }
    printers.Choose(command);
    LoadTranslations();
    OpenDatabase(program);
    engine::Database& database = OpenedDatabase();
    SmtpMailSession session(program.services());
    OutputDelivery delivery(command.delivery.file, session, command.delivery.recipients);
    print::PageOutput output(printers, printers, delivery);
    const auto exitCode = [&] { return delivery.HasDelivered() || printers.HasPrinted() ? 0 : failed; };
    print::PageWriters pages(printers, output, program.Title());
    const print::PrintServices services{program.services(), delivery,
                                        [&] { return print::ReadPrintAttributes(database); }, &pages};
    if (std::holds_alternative<LayoutRequest>(command.request)) {
        RunLayout(command, program, database, services);
        return exitCode();
    }
    print::PrintJob job(services);
    job.SetOutputTarget(command.ToPages() ? 0 : static_cast<qint16>(command.delivery.target));
    NoView view;
    ReportRun run;
    ReportContext context{program, run, command.delivery, view, database, job};
    velmora::PrintReport(context, command.request);
    return exitCode();
}

} // namespace

int RunReport(const Command& command, const QString& executablePath) {
    if (command.showFormula) {
        return ShowFormula(command) ? 0 : failed;
    }
    ConsoleProgram console(command, executablePath);
    try {
        return Run(command, console);
    } catch (const ProgramEnd& end) {
        return end.exitCode;
    } catch (const std::exception&) {
        console.Get().services().dialogs.ShowMessage(
            {CurrentError().Description(), u"velmora-report"_s, Buttons::Ok, Icon::Critical});
        return failed;
    }
}

} // namespace velmora::report
