#include "reports/PrintReport.h"

#include "reports/DailyReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupancyReport.h"
#include "reports/UsageReport.h"

namespace velmora {

void PrintReport(ReportContext& context, const ReportRequest& request) {
    if (const auto* daily = std::get_if<DailyRequest>(&request)) {
        PrintDailyReport(context, *daily);
    } else if (const auto* occupancy = std::get_if<OccupancyRequest>(&request)) {
        const bool byLocation = occupancy->list == OccupancyList::Occupants;
        (byLocation ? PrintOccupantReport : PrintDirectoryReport)(context, *occupancy);
    } else if (const auto* exceptions = std::get_if<ExceptionRequest>(&request)) {
        PrintExceptionReport(context, *exceptions);
    } else if (const auto* usage = std::get_if<UsageRequest>(&request)) {
        PrintUsageReport(context, *usage);
    }
}

} // namespace velmora
