#include "reports/PrintReport.h"

#include "reports/DailyReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupancyReport.h"
#include "reports/UsageReport.h"

namespace velmora {

namespace {

struct Printer {
    ReportContext& context;

    void operator()(const DailyRequest& request) const { PrintDailyReport(context, request); }
    void operator()(const OccupancyRequest& request) const {
        const bool byLocation = request.list == OccupancyList::Occupants;
        (byLocation ? PrintOccupantReport : PrintDirectoryReport)(context, request);
    }
    void operator()(const ExceptionRequest& request) const { PrintExceptionReport(context, request); }
    void operator()(const UsageRequest& request) const { PrintUsageReport(context, request); }
    void operator()(const LayoutRequest&) const {}
};

} // namespace

void PrintReport(ReportContext& context, const ReportRequest& request) {
    std::visit(Printer{context}, request);
}

} // namespace velmora
