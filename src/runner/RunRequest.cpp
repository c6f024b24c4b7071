#include "runner/RunRequest.h"

#include "layouts/LayoutRunner.h"
#include "layouts/RunCrystalReport.h"
#include "reports/PrintReport.h"

namespace velmora::runner {

void RunRequest(ReportContext& context, const print::PrintServices& services, const ReportRequest& request) {
    const Delivery& delivery = context.delivery;
    const auto target = delivery.ToPages() ? print::Target::Printer : static_cast<print::Target>(delivery.target);
    if (const auto* layout = std::get_if<LayoutRequest>(&request)) {
        layouts::LayoutRunner runner(services, context.database, target, delivery.orientation);
        layouts::RunCrystalReport(context.program, *layout, context.run, context.database, runner);
        return;
    }
    context.job.SetOutputTarget(static_cast<qint16>(target));
    PrintReport(context, request);
}

} // namespace velmora::runner
