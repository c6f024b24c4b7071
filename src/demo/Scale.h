#pragma once

#include "base/DateTime.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace velmora::demo {

enum class Tier { Typical, Large, Stress };

// "typical", "large" or "stress"; none for anything else.
std::optional<Tier> TierByName(const QString& name);

// How big a demo site is. The assets add up to 300, 5,000 and 32,000.
struct Scale {
    int conferenceRooms = 0; // numbered below 256
    int trainingRooms = 0;
    int labs = 0;
    int meetingRooms = 0;
    int desks = 0;
    int offices = 0; // permanently occupied; every tenth is kept for visitors
    int otherRooms = 0;
    int equipment = 0;
    int extensions = 0;
    int guestExtensions = 0;
    int unused = 0; // placeholders named "Unused ..."

    int buildings = 0; // "B1", "B2", ...
    int floors = 0;    // of each building

    int persons = 0;
    int reservations = 0; // all of them
    int startsPerDay = 0; // on a working day
    int futureDays = 0;   // how far ahead of today reservations are made
    int requests = 0;     // with notes copied onto them
    int workOrders = 0;
};

Scale ScaleOf(Tier tier);

// What a demo site is made from: the same values make the same site.
struct Options {
    Tier tier = Tier::Typical;
    Date today{};
    std::uint64_t seed = 1;
};

} // namespace velmora::demo
