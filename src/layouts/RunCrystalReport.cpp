#include "layouts/RunCrystalReport.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "layouts/LayoutChoice.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

void RunCrystalReport(const Program& program, const DeskState& state, engine::Database& database,
                      ReportControl& report) {
    const Services& services = program.services();
    const LayoutChoice* choice = FindLayoutChoice(state.SelectedLayout);
    if (choice == nullptr) {
        services.dialogs.ShowMessage({Translate(u"No Report Selected"_s), program.Title(), Buttons::Ok, Icon::None});
        return;
    }
    // The pointer of a report that is being printed is that report's own.
    std::optional<BusyPointer> busy;
    if (!state.ReportRunning) {
        busy.emplace(services.eventLoop);
    }
    const QString formula = SelectionFormula(choice->index, state);
    Steps steps(services.errors, u"Service Administration"_s, u"Run Crystal Report"_s, QString());
    steps.Step(u"Choosing the records"_s, [&] { report.SetSelectionFormula(formula); });
    steps.Step(u"Choosing the layout"_s,
               [&] { report.SetReportFile(DataDirectory() + u'\\' + choice->file.toString()); });
    steps.Step(u"Refreshing the dates"_s, [&] { database.OpenQueryDef(u"RefreshTextDates").Execute(); });
    steps.Step(u"Running the report"_s, [&] { report.Run(); });
}

} // namespace velmora::layouts
