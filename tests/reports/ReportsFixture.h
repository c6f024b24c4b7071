#pragma once

#include "reports/DirectoryReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupantReport.h"
#include "reports/UsageReport.h"
#include "tests/desk/DeskFixture.h"

namespace velmora {

using PrintRoutine = void (*)(ReportContext& context);

// The desk on the site of tests/reports/site.sql.
class ReportsFixture : public DeskFixture {
protected:
    explicit ReportsFixture(const QString& startupArgument = {})
        : DeskFixture(startupArgument, u"/reports/site.sql"_s) {
        state_.optDay = 1;
        state_.dtcException = MakeDate(2026, 3, 5);
        state_.dtcUsage = MakeDate(2026, 3, 5);
    }

    // Runs a report as its button does and returns what was delivered.
    QByteArray Print(PrintRoutine routine) {
        job_.SetOutputTarget(state_.PrinterControl1.Destination);
        ReportContext context = Context();
        routine(context);
        return delivery_.delivered.empty() ? QByteArray() : delivery_.delivered.back();
    }
};

} // namespace velmora
