#pragma once

#include "reports/Gather.h"
#include "reports/Occupancy.h"
#include "reports/Requests.h"

namespace velmora {

// A row of the exception report.
struct ExceptionRow : Occupancy {
    qint32 asset = 0;
    QUtf8StringView eventType;
    // What is assigned to a person outside of it; the organization of a reservation that is not checked in.
    QUtf8StringView fourth;
};

using ExceptionRows = Gathered<ExceptionRow>;

ExceptionRows GatherExceptions(const ExceptionRequest& request, const ReportDays& days, const Gathering& gathering);

} // namespace velmora
