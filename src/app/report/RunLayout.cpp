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
                                                        command.orientation);
    }
    constexpr qint16 htmlFile = 4;
    const bool html = command.state.PrinterControl1.Destination == htmlFile;
    const Kind kind = command.ToMail() ? Kind::Mail : html ? Kind::Html : Kind::File;
    return std::make_unique<layouts::TextOutput>(program.services(), delivery, kind);
}

} // namespace

bool ShowFormula(const Command& command) {
    const qint16 index = command.state.SelectedLayout;
    const QString line = layouts::FindLayoutChoice(index)->file.toString() + u'\t' +
                         layouts::SelectionFormula(index, command.state) + u'\n';
    return std::fputs(line.toUtf8().constData(), stdout) >= 0 && std::fflush(stdout) == 0;
}

void RunLayout(const Command& command, const Program& program, engine::Database& database, print::Delivery& delivery,
               print::PageOutput& output) {
    const auto target = MakeOutput(command, program, delivery, output);
    layouts::LayoutRunner runner(program.services(), database, *target);
    layouts::RunCrystalReport(program, command.state, database, runner);
}

} // namespace velmora::report
