#pragma once

#include <QStringView>

#include <optional>

namespace velmora::engine::dialect {

// What DateAdd and DateDiff count in.
enum class Interval { Year, Quarter, Month, Week, Day, Hour, Minute, Second };

// By its short name, in any letter case: yyyy, q, m, ww, d (also y and w), h, n, s. None for any other.
std::optional<Interval> IntervalOf(QStringView name);

} // namespace velmora::engine::dialect
