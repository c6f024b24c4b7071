#pragma once

#include "demo/Events.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace velmora::demo {

// In the order of the names in KindTable.cpp.
enum class AssetKind {
    ConferenceRoom,
    TrainingRoom,
    Lab,
    MeetingRoom,
    Desk,
    Office,
    VisitorOffice,
    OtherRoom,
    Equipment,
    Extension,
    GuestExtension,
    Unused,
    Gone, // deleted since: reservations name its number, but it has no row
};
constexpr size_t KindCount = static_cast<size_t>(AssetKind::Gone) + 1;

struct EventRule {
    QString type;
    int share = 0; // of the kind's events, in per cent
    Span span = Span::Meeting;
    int guestPercent = 0; // how often it is for a guest's organization
    int phonePercent = 0; // how often a guest telephone is booked with it
};

struct KindTraits {
    AssetKind kind = AssetKind::Gone;
    bool isPlace = false;
    int eventsInHundredDays = 0; // of one room, when everything is as full as it gets
    QStringList spaceTypes;      // the usual one first
    QString stationTypes;        // the section of "rooms.txt" that names its telephones
    QString descriptions;        // and the one that describes it; empty for none
    std::array<int, 3> seats{};  // how many at least, in steps of how many, and how many different numbers
    std::vector<EventRule> events;
};

// What share/demo/kinds.txt says of the kinds, in the order of that file.
class KindTable {
public:
    // Throws std::logic_error for a word that it does not know.
    KindTable();

    const std::vector<KindTraits>& All() const { return kinds_; }
    const KindTraits& Of(AssetKind kind) const;

private:
    std::vector<KindTraits> kinds_;
};

} // namespace velmora::demo
