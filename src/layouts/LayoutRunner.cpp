#include "layouts/LayoutRunner.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/NativePath.h"
#include "layouts/LayoutChoice.h"
#include "layouts/LayoutWalk.h"

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

void RunLayout(const print::PrintServices& services, engine::Database& database, const LayoutTarget& target,
               const QString& path, const QString& formula) {
    const Layout layout = ReadLayoutFile(NativePath(path), database.Schema());
    const Formula selection = ParseFormula(formula, layout.scope);
    print::JobState state;
    state.OutputTarget = target.target;
    state.PreviewMode = target.target == print::Target::Preview;
    state.pageForm = layout.pages;
    state.pageForm->orientation = target.orientation.value_or(layout.pages.orientation);
    const auto writer = print::MakeWriter(services, state);
    writer->Begin();
    WriteRecords(layout, selection, database, services.program.localeText, services.program.clock.Now(), *writer);
    writer->Finish();
    writer->Deliver();
}

void RunCrystalReport(const Program& program, const LayoutRequest& request, const ReportRun& run,
                      engine::Database& database,
                      const std::function<void(const QString& path, const QString& formula)>& runLayout) {
    const Services& services = program.services();
    const LayoutChoice* choice = FindLayoutChoice(request.layout);
    if (choice == nullptr) {
        services.dialogs.ShowMessage({Translate(u"No Report Selected"_s), program.Title(), Buttons::Ok, Icon::None});
        return;
    }
    const AtWork atWork(services, run.ReportRunning);
    const QString path = DataDirectory() + u'\\' + choice->file.toString();
    Steps steps(services.errors, u"Service Administration"_s, u"Run Crystal Report"_s, QString());
    steps.Step(u"Refreshing the dates"_s, [&] { database.OpenQueryDef(u"RefreshTextDates")->Execute(); });
    steps.Step(u"Running the report"_s, [&] { runLayout(path, SelectionFormula(request)); });
}

} // namespace velmora::layouts
