#include "ops/Hold.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/Helpers.h"
#include "ops/ErrorReport.h"
#include "ops/SharedDatabase.h"

namespace velmora {

namespace {

using namespace std::chrono_literals;

// More than ten whole seconds, less than eleven.
constexpr auto noticeTime = 10500ms;
constexpr qint16 lastMinute = 1440;
constexpr qint16 noShutdown = 16000;
constexpr int warningMinutes = 5;

void ReleaseDatabase() {
    auto& shared = CurrentProgram().Part<SharedDatabase>();
    if (shared.database == nullptr) {
        return;
    }
    try {
        shared.database->Idle(engine::IdleOption::FreeLocks);
        shared.database->Idle(engine::IdleOption::RefreshCache);
    } catch (const Error& error) {
        // Most likely the file is gone, which is what is looked at next.
        CurrentProgram().services().log.Write(error.Description());
    }
}

[[noreturn]] void EndInOrder() {
    ExitProgram();
    throw StopProgram{0};
}

// A minute that cannot be read is reported once; the program then runs without a shutdown.
void ReadMinute() {
    try {
        ReadLogoffMinute();
    } catch (const Error& error) {
        Settings().LogoffMinute = noShutdown;
        ReportError(error, {QStringLiteral("Service Administration"), QStringLiteral("Check Hold"),
                            QStringLiteral("Reading Logoff Minute")});
    }
}

void CheckShutdown() {
    ReadMinute();
    if (Settings().LogoffMinute > lastMinute) {
        return;
    }
    const Services& services = CurrentProgram().services();
    const DateTimeFields now = Fields(services.clock.Now());
    const int difference = Settings().LogoffMinute - (now.hour * 60 + now.minute);
    if (difference < 0 || difference >= warningMinutes) {
        return;
    }
    services.eventLoop.Beep();
    ShowStatus(QStringLiteral("Velmora is scheduled to shut down in %1 minutes").arg(difference));
    if (difference == 0) {
        EndInOrder();
    }
}

} // namespace

std::optional<QString> HoldNotice() {
    if (const Site site = ConfiguredSite(); !site.Exists()) {
        return QStringLiteral("Database ") + site.Location() +
               QStringLiteral(" cannot be found. Velmora will shut down.");
    }
    const QString holdFile = DataDirectory() + QStringLiteral("\\HOLD.TXT");
    if (FileExists(holdFile)) {
        return Translate(QStringLiteral("Administrative Hold Placed For:")) + QStringLiteral("\r\n") +
               ReadFileText(holdFile) + QStringLiteral(" Velmora will shut down.");
    }
    return std::nullopt;
}

void CheckHold() {
    ReleaseDatabase();
    if (const auto notice = HoldNotice()) {
        ShowStatus(*notice);
        CurrentProgram().services().eventLoop.Wait(noticeTime);
        EndInOrder();
    }
    CheckShutdown();
}

} // namespace velmora
