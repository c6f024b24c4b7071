#pragma once

#include "reports/Gather.h"
#include "reports/ReportContext.h"

#include <array>

namespace velmora {

enum class UsageClass { Unreserved, Permanent, NonPermanent };

// A location or person of the usage report. Texts are UTF-8.
struct UsageRow {
    // The three levels of its group.
    std::array<QUtf8StringView, 3> group;
    // None: it is not counted.
    std::optional<UsageClass> usage;
    // The location's name, or the person's last name and first.
    QUtf8StringView name;
    QUtf8StringView firstName;
};

using UsageRows = Gathered<UsageRow>;

// Gathers the locations or persons in the order of their groups.
UsageRows GatherUsage(const UsageRequest& request, const ReportDays& days, const Gathering& gathering);

// Prints how the locations, or the persons by first, second or third area, are used on the requested day: how many are
// unreserved, permanently reserved or reserved for a limited time, in groups of three levels; with detail also which.
// Onto the output target chosen before.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Usage Report".
void PrintUsageReport(ReportContext& context, const UsageRequest& request);

} // namespace velmora
