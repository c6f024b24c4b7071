#include "runner/RunRequest.h"

#include "layouts/LayoutRunner.h"
#include "reports/PrintReport.h"

namespace velmora::runner {

void RunRequest(ReportContext& context, const print::PrintServices& services, const ReportRequest& request) {
    const Delivery& delivery = context.delivery;
    const auto target = delivery.ToPages() ? print::Target::Printer : static_cast<print::Target>(delivery.target);
    if (const auto* layout = std::get_if<LayoutRequest>(&request)) {
        const auto runLayout = [&](const QString& path, const QString& formula) {
            layouts::RunLayout(services, context.database, {target, delivery.orientation}, path, formula);
        };
        layouts::RunCrystalReport(context.program, *layout, context.run, context.database, runLayout);
        return;
    }
    context.job.SetOutputTarget(static_cast<qint16>(target));
    PrintReport(context, request);
}

} // namespace velmora::runner
