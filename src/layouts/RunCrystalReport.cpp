#include "layouts/RunCrystalReport.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "layouts/LayoutChoice.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

// Shows that the program is at work while it lives. Pointer and progress window of a report that is being printed are
// that report's own.
class AtWork {
public:
    AtWork(const Services& services, bool reportRunning) : services_(services) {
        if (!reportRunning) {
            busy_.emplace(services_.eventLoop);
            services_.progress.Show(Translate(u"Preparing Report"_s), std::nullopt);
        }
    }
    ~AtWork() {
        if (busy_) {
            services_.progress.Show({}, std::nullopt);
        }
    }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

private:
    const Services& services_;
    std::optional<BusyPointer> busy_;
};

} // namespace

void RunCrystalReport(const Program& program, const LayoutRequest& request, const ReportRun& run,
                      engine::Database& database, ReportControl& report) {
    const Services& services = program.services();
    const LayoutChoice* choice = FindLayoutChoice(request.layout);
    if (choice == nullptr) {
        services.dialogs.ShowMessage({Translate(u"No Report Selected"_s), program.Title(), Buttons::Ok, Icon::None});
        return;
    }
    const AtWork atWork(services, run.ReportRunning);
    const QString formula = SelectionFormula(request);
    Steps steps(services.errors, u"Service Administration"_s, u"Run Crystal Report"_s, QString());
    steps.Step(u"Choosing the records"_s, [&] { report.SetSelectionFormula(formula); });
    steps.Step(u"Choosing the layout"_s,
               [&] { report.SetReportFile(DataDirectory() + u'\\' + choice->file.toString()); });
    steps.Step(u"Refreshing the dates"_s, [&] { database.OpenQueryDef(u"RefreshTextDates")->Execute(); });
    steps.Step(u"Running the report"_s, [&] { report.Run(); });
}

} // namespace velmora::layouts
