#include "demo/RoomDiary.h"

#include <algorithm>

namespace velmora::demo {

bool RoomDiary::Take(int room, Date day, int startQuarter, DateTime end) {
    Room& state = rooms_[static_cast<size_t>(room)];
    const DateTime start = StartOfDay(day) + std::chrono::minutes(startQuarter * 15);
    if (state.busyUntil > start) {
        return false;
    }
    if (state.day != day) {
        state.day = day;
        state.quarters = 0;
    }
    const DateTime midnight = StartOfDay(day) + std::chrono::days(1);
    const bool untilLater = end >= midnight;
    const auto sameDay = std::chrono::duration_cast<std::chrono::minutes>(end - StartOfDay(day)).count() / 15;
    const int endQuarter = untilLater ? WholeDay : static_cast<int>(sameDay);
    const std::uint64_t bits = Bits(startQuarter, endQuarter);
    if ((state.quarters & bits) != 0) {
        return false;
    }
    state.quarters |= bits;
    if (untilLater) {
        state.busyUntil = end;
    }
    return true;
}

std::uint64_t RoomDiary::Bits(int startQuarter, int endQuarter) {
    const int first = std::clamp(startQuarter, FirstQuarter, LastQuarter) - FirstQuarter;
    const int last = std::clamp(endQuarter, FirstQuarter, LastQuarter) - FirstQuarter;
    const int count = last - first;
    if (count <= 0) {
        return 0;
    }
    const std::uint64_t ones = count >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
    return ones << first;
}

} // namespace velmora::demo
