#include "app/report/RunLayout.h"

#include "layouts/LayoutChoice.h"
#include "layouts/LayoutRunner.h"
#include "layouts/RunCrystalReport.h"

#include <cstdio>
#include <memory>

namespace velmora::report {

namespace {

std::unique_ptr<layouts::LayoutOutput> MakeOutput(const Command& command, const Program& program,
                                                  print::Delivery& delivery, print::PageOutput& output) {
    using Kind = layouts::TextOutput::Kind;
    if (command.ToPages()) {
        return std::make_unique<layouts::PrinterOutput>(program.services(), output, program.Title(),
                                                        command.delivery.orientation);
    }
    const bool html = command.delivery.target == DeliveryTarget::HtmlFile;
    const Kind kind = command.ToMail() ? Kind::Mail : html ? Kind::Html : Kind::File;
    return std::make_unique<layouts::TextOutput>(program.services(), delivery, kind);
}

} // namespace

bool ShowFormula(const Command& command) {
    const auto& request = std::get<LayoutRequest>(command.request);
    const QString line =
        layouts::FindLayoutChoice(request.layout)->file.toString() + u'\t' + layouts::SelectionFormula(request) + u'\n';
    return std::fputs(line.toUtf8().constData(), stdout) >= 0 && std::fflush(stdout) == 0;
}

void RunLayout(const Command& command, const Program& program, engine::Database& database, print::Delivery& delivery,
               print::PageOutput& output) {
    const auto target = MakeOutput(command, program, delivery, output);
    layouts::LayoutRunner runner(program.services(), database, *target);
    layouts::RunCrystalReport(program, std::get<LayoutRequest>(command.request), {}, database, runner);
}

} // namespace velmora::report
