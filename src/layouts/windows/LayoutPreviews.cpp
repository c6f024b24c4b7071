#include "layouts/windows/LayoutPreviews.h"

#include "layouts/LayoutRunner.h"
#include "layouts/RunCrystalReport.h"

namespace velmora::layouts {

LayoutPreviews::LayoutPreviews(const Program& program, print::PageOutput& output)
    : program_(program), portraitPrinter_(program.services().printers, output, Orientation::Portrait),
      landscapePrinter_(program.services().printers, output, Orientation::Landscape),
      portrait_(program.services(), portraitPrinter_), landscape_(program.services(), landscapePrinter_),
      output_(program.services(), portrait_, landscape_, program.Title()) {}

void LayoutPreviews::Run(const LayoutRequest& request, const ReportRun& run, engine::Database& database) {
    LayoutRunner runner(program_.services(), database, output_);
    RunCrystalReport(program_, request, run, database, runner);
}

} // namespace velmora::layouts
