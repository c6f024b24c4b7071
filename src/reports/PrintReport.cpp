#include "reports/PrintReport.h"

#include "reports/DailyReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupancyReport.h"
#include "reports/UsageReport.h"

namespace velmora {

namespace {

struct Printer {
    ReportContext& context;

    bool operator()(const DailyRequest& request) const {
        PrintDailyReport(context, request);
        return true;
    }
    bool operator()(const OccupancyRequest& request) const {
        const bool byLocation = request.list == OccupancyList::Occupants;
        (byLocation ? PrintOccupantReport : PrintDirectoryReport)(context, request);
        return true;
    }
    bool operator()(const ExceptionRequest& request) const {
        PrintExceptionReport(context, request);
        return true;
    }
    bool operator()(const UsageRequest& request) const {
        PrintUsageReport(context, request);
        return true;
    }
    bool operator()(const LayoutRequest&) const { return false; }
};

} // namespace

bool PrintReport(ReportContext& context, const ReportRequest& request) {
    return std::visit(Printer{context}, request);
}

} // namespace velmora
