#include "engine/dialect/Interval.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

struct Entry {
    QStringView name;
    Interval interval;
};

constexpr std::array entries = std::to_array<Entry>({
    {u"yyyy", Interval::Year},
    {u"q", Interval::Quarter},
    {u"m", Interval::Month},
    {u"ww", Interval::Week},
    {u"d", Interval::Day},
    {u"y", Interval::Day},
    {u"w", Interval::Day},
    {u"h", Interval::Hour},
    {u"n", Interval::Minute},
    {u"s", Interval::Second},
});

} // namespace

std::optional<Interval> IntervalOf(QStringView name) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == entries.end() ? std::nullopt : std::optional(found->interval);
}

} // namespace velmora::engine::dialect
