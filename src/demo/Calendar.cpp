#include "demo/Calendar.h"

#include "demo/Random.h"

#include <algorithm>

namespace velmora::demo {

namespace {

int StartsOn(const Options& options, const Scale& scale, Date day) {
    Random random(options.seed, static_cast<std::uint64_t>(day.time_since_epoch().count()));
    const int percent = IsWorkingDay(day) ? random.Between(94, 106) : random.Between(4, 10);
    return scale.startsPerDay * percent / 100;
}

} // namespace

Date WorkingDayFrom(Date day) {
    while (!IsWorkingDay(day)) {
        day += std::chrono::days(1);
    }
    return day;
}

std::vector<DayPlan> PlanDays(const Options& options, const Scale& scale, const std::vector<DateTime>& fixed) {
    std::vector<DayPlan> plan;
    Date day = options.today + std::chrono::days(scale.futureDays);
    int planned = 0;
    // Backwards from the last day until the days and the occupancies before them make up the number.
    for (;; day -= std::chrono::days(1)) {
        const auto before = std::lower_bound(fixed.begin(), fixed.end(), StartOfDay(day));
        const auto next = std::lower_bound(before, fixed.end(), StartOfDay(day) + std::chrono::days(1));
        const int left = scale.reservations - planned - static_cast<int>(before - fixed.begin());
        const int starts = std::max(StartsOn(options, scale, day), static_cast<int>(next - before));
        plan.push_back({day, std::min(starts, left)});
        planned += plan.back().starts;
        if (starts >= left) {
            break;
        }
    }
    std::reverse(plan.begin(), plan.end());
    return plan;
}

} // namespace velmora::demo
