#pragma once

#include "base/DateTime.h"

#include <cstdint>
#include <vector>

namespace velmora::demo {

// When each room is taken, so that no two reservations of one room meet. Asked day by day, never backwards: it knows
// one day's times and, for what lasts longer, until when.
class RoomDiary {
public:
    static constexpr int FirstQuarter = 7 * 4; // a day is filled from 7:00
    static constexpr int LastQuarter = 23 * 4; // until 23:00 (or on until midnight)
    static constexpr int WholeDay = 24 * 4;

    explicit RoomDiary(int rooms) : rooms_(static_cast<size_t>(rooms)) {}

    // Takes the room from a quarter hour of the day until `end`, on the same day or later, when it is free then.
    bool Take(int room, Date day, int startQuarter, DateTime end);

private:
    struct Room {
        DateTime busyUntil{};       // for what lasts longer than a day
        Date day{};                 // the day that `quarters` is about
        std::uint64_t quarters = 0; // one bit for each taken quarter hour between 7:00 and 23:00
    };

    static std::uint64_t Bits(int startQuarter, int endQuarter);

    std::vector<Room> rooms_;
};

} // namespace velmora::demo
