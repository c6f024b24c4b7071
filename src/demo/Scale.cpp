#include "demo/Scale.h"

#include "demo/WordFile.h"

namespace velmora::demo {

std::optional<Tier> TierByName(const QString& name) {
    const qsizetype tier =
        QStringList{QStringLiteral("typical"), QStringLiteral("large"), QStringLiteral("stress")}.indexOf(name);
    return tier < 0 ? std::nullopt : std::optional(static_cast<Tier>(tier));
}

Scale ScaleOf(Tier tier) {
    Scale scale;
    // In the order of the file's rows.
    int* const sizes[] = {&scale.conferenceRooms, &scale.trainingRooms,   &scale.labs,         &scale.meetingRooms,
                          &scale.desks,           &scale.offices,         &scale.otherRooms,   &scale.equipment,
                          &scale.extensions,      &scale.guestExtensions, &scale.unused,       &scale.buildings,
                          &scale.floors,          &scale.persons,         &scale.reservations, &scale.startsPerDay,
                          &scale.futureDays,      &scale.requests,        &scale.workOrders};
    const auto rows = WordFile(QStringLiteral("kinds.txt")).Rows(QStringLiteral("sizes"));
    for (size_t n = 0; n < std::size(sizes); ++n) {
        *sizes[n] = rows.at(n).at(1 + static_cast<qsizetype>(tier)).toInt();
    }
    return scale;
}

} // namespace velmora::demo
