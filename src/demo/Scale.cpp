#include "demo/Scale.h"

namespace velmora::demo {

std::optional<Tier> TierByName(const QString& name) {
    if (name == QLatin1String("typical")) {
        return Tier::Typical;
    }
    if (name == QLatin1String("large")) {
        return Tier::Large;
    }
    if (name == QLatin1String("stress")) {
        return Tier::Stress;
    }
    return std::nullopt;
}

Scale ScaleOf(Tier tier) {
    Scale scale;
    switch (tier) {
    case Tier::Typical:
        scale = {.conferenceRooms = 40,
                 .trainingRooms = 10,
                 .labs = 14,
                 .meetingRooms = 24,
                 .desks = 20,
                 .offices = 130,
                 .otherRooms = 16,
                 .equipment = 14,
                 .extensions = 22,
                 .guestExtensions = 6,
                 .unused = 4,
                 .buildings = 2,
                 .floors = 4,
                 .persons = 600,
                 .reservations = 75'000,
                 .startsPerDay = 60,
                 .futureDays = 180,
                 .requests = 60,
                 .workOrders = 900};
        break;
    case Tier::Large:
        scale = {.conferenceRooms = 200,
                 .trainingRooms = 120,
                 .labs = 250,
                 .meetingRooms = 500,
                 .desks = 450,
                 .offices = 2'500,
                 .otherRooms = 220,
                 .equipment = 120,
                 .extensions = 500,
                 .guestExtensions = 100,
                 .unused = 40,
                 .buildings = 12,
                 .floors = 6,
                 .persons = 10'000,
                 .reservations = 1'000'000,
                 .startsPerDay = 1'000,
                 .futureDays = 180,
                 .requests = 600,
                 .workOrders = 12'000};
        break;
    case Tier::Stress:
        scale = {.conferenceRooms = 220,
                 .trainingRooms = 700,
                 .labs = 1'600,
                 .meetingRooms = 4'500,
                 .desks = 4'000,
                 .offices = 15'000,
                 .otherRooms = 1'180,
                 .equipment = 700,
                 .extensions = 3'300,
                 .guestExtensions = 600,
                 .unused = 200,
                 .buildings = 40,
                 .floors = 8,
                 .persons = 60'000,
                 .reservations = 2'200'000,
                 .startsPerDay = 9'000,
                 .futureDays = 90,
                 .requests = 2'000,
                 .workOrders = 40'000};
        break;
    }
    return scale;
}

} // namespace velmora::demo
