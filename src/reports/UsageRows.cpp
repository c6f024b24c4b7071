#include "reports/UsageRows.h"

namespace velmora {

using engine::Recordset;

namespace {

struct Breakdown {
    const char16_t* query;
    // The fields of the three levels.
    std::array<const char*, 3> group;
    // A location has no first name.
    const char* name;
    const char* firstName;
};

// By UsageBreakdown.
constexpr std::array<Breakdown, 4> breakdowns{{
    {u"A1", {"AreaName", "EventType", "Organization"}, "Name", nullptr},
    {u"P1", {"Area", "Organization", "EventType"}, "LastName", "FirstName"},
    {u"P2", {"Area2", "Organization", "EventType"}, "LastName", "FirstName"},
    {u"P3", {"Area3", "Organization", "EventType"}, "LastName", "FirstName"},
}};

std::optional<UsageClass> ClassOf(const engine::Field& perm) {
    constexpr qint64 first = -2;
    const qint64 usage = perm.ToInteger() - first;
    return perm.IsNull() || usage < 0 || usage > 2 ? std::nullopt : std::optional(static_cast<UsageClass>(usage));
}

UsageRow ReadRow(const Breakdown& breakdown, const Recordset& record, TextPool& texts) {
    UsageRow row;
    for (size_t level = 0; level < row.group.size(); ++level) {
        row.group[level] = texts.Keep(record[breakdown.group[level]]);
    }
    row.usage = ClassOf(record["Perm"]);
    row.name = texts.Keep(record[breakdown.name]);
    if (breakdown.firstName != nullptr) {
        row.firstName = texts.Keep(record[breakdown.firstName]);
    }
    return row;
}

} // namespace

UsageRows GatherUsage(const UsageRequest& request, const ReportDays& days, const Gathering& gathering) {
    const Breakdown& breakdown = breakdowns.at(static_cast<size_t>(request.breakdown));
    const auto read = [&](const Recordset& record, TextPool& texts, const Attempt&) {
        return std::optional(ReadRow(breakdown, record, texts));
    };
    return RowGatherer<UsageRow>(gathering, read).Gather([&] {
        TextPool texts;
        return OpenOverDays(gathering.database, breakdown.query, days,
                            [&](const Recordset& record) { ReadRow(breakdown, record, texts); });
    });
}

} // namespace velmora
