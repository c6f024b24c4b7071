#pragma once

#include "reports/Gather.h"
#include "reports/Requests.h"

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

} // namespace velmora
