#include "ops/SharedDatabase.h"

#include "base/Program.h"
#include "data/Configuration.h"
#include "ops/ErrorReport.h"

namespace velmora {

namespace {

using engine::EngineError;
using engine::EngineErrorNumber;

// Ends the program without the orderly exit: nothing was opened yet but the start-up window.
[[noreturn]] void EndAtStart() {
    CurrentProgram().services().windows.UnloadStartup();
    throw StopProgram{1};
}

void Tell(const QString& text) {
    const Program& program = CurrentProgram();
    program.services().dialogs.ShowMessage({text, program.Title(), Buttons::Ok, Icon::None});
}

// Returns when the file was repaired.
void OfferRepair(const Site& site) {
    const Program& program = CurrentProgram();
    const Services& services = program.services();
    const Answer answer = services.dialogs.ShowMessage(
        {QStringLiteral("Database is corrupt. Attempt to Repair?"), program.Title(), Buttons::YesNo, Icon::None});
    if (answer != Answer::Yes) {
        EndAtStart();
    }
    try {
        if (site.IsInUse()) {
            Tell(site.Location() + QStringLiteral("Appears to be open by other users, cannot repair"));
            EndAtStart();
        }
        const BusyPointer busy(services.eventLoop);
        const engine::RepairReport report = site.Repair(services.clock.Now());
        services.log.Write(report.ToText());
    } catch (const Error& error) {
        services.log.Write(error.Description());
        Tell(site.Location() + QStringLiteral(" could not be repaired."));
        throw StopProgram{1};
    }
}

} // namespace

void OpenSharedDatabase() {
    auto& shared = CurrentProgram().Part<SharedDatabase>();
    for (;;) {
        const Site site = ConfiguredSite();
        try {
            shared.database = site.Open(&CurrentProgram().services().log);
            return;
        } catch (const EngineError& error) {
            if (error.Kind() == EngineErrorNumber::Damaged) {
                OfferRepair(site);
            } else if (ReportError(error, {QString::number(error.Number()), {}, {}}) != Answer::Retry) {
                EndAtStart();
            }
        }
    }
}

} // namespace velmora
