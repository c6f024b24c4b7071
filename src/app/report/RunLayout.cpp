#include "app/report/RunLayout.h"

#include "layouts/LayoutChoice.h"
#include "layouts/LayoutRunner.h"
#include "layouts/RunCrystalReport.h"

#include <cstdio>

namespace velmora::report {

bool ShowFormula(const Command& command) {
    const auto& request = std::get<LayoutRequest>(command.request);
    const QString line =
        layouts::FindLayoutChoice(request.layout)->file.toString() + u'\t' + layouts::SelectionFormula(request) + u'\n';
    return std::fputs(line.toUtf8().constData(), stdout) >= 0 && std::fflush(stdout) == 0;
}

void RunLayout(const Command& command, const Program& program, engine::Database& database,
               const print::PrintServices& services) {
    const auto target =
        command.ToPages() ? print::Target::Printer : static_cast<print::Target>(command.delivery.target);
    layouts::LayoutRunner runner(services, database, target, command.delivery.orientation);
    layouts::RunCrystalReport(program, std::get<LayoutRequest>(command.request), {}, database, runner);
}

} // namespace velmora::report
