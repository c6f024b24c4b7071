#include "demo/House.h"

#include "data/AssetRules.h"
#include "demo/WordFile.h"

namespace velmora::demo {

namespace {

constexpr int GoneEvery = 97;         // one number in so many was deleted
constexpr int ConferenceGapEvery = 9; // as many conference rooms were given up

// Gives numbers, buildings and names to one asset after the other.
class Builder {
public:
    explicit Builder(const House& house) : house_(house), random_(house.Draws(House::Subject::Assets)) {}

    std::vector<Asset> Build() {
        AddConferenceRooms();
        next_ = firstOtherAsset;
        for (int n = 0; n < scale_.trainingRooms; ++n) {
            Add(AssetKind::TrainingRoom, n, scale_.trainingRooms).name = QStringLiteral("Training %1").arg(n + 1);
        }
        AddRoomsByFloor();
        for (int n = 0; n < scale_.desks; ++n) {
            NameByPlace(Add(AssetKind::Desk, n, scale_.desks), QStringLiteral("D"));
        }
        AddEquipment();
        AddExtensions();
        AddUnused();
        return std::move(assets_);
    }

private:
    QString Word(const QString& section) {
        const QStringList& words = words_.Entries(section);
        return words.size() == 1 ? words.front() : random_.Pick(words);
    }

    // The next asset, with what its kind says of it: the position-th of `count` that are spread over all floors.
    Asset& Add(AssetKind kind, int position, int count) {
        if (next_ > firstOtherAsset && next_ % GoneEvery == 0) {
            assets_.push_back({.id = next_++});
        }
        Asset& asset = assets_.emplace_back(Asset{.id = next_++, .kind = kind});
        Place(asset, position, count);
        const KindTraits& traits = house_.kinds.Of(kind);
        if (!traits.descriptions.isEmpty()) {
            asset.description = Word(traits.descriptions);
        }
        asset.seats = traits.seats[0] + (traits.seats[2] > 1 ? traits.seats[1] * random_.Below(traits.seats[2]) : 0);
        return asset;
    }

    // "B2-L301" for laboratories, "B2-301" for rooms without a letter.
    static void NameByPlace(Asset& asset, const QString& letter) {
        asset.name = QStringLiteral("B%1-%2%3%4")
                         .arg(asset.building)
                         .arg(letter)
                         .arg(asset.floor)
                         .arg(asset.room, 2, 10, QLatin1Char('0'));
    }

    void Place(Asset& asset, int position, int count) const {
        if (count == 0) {
            return;
        }
        const int floors = scale_.buildings * scale_.floors;
        const int floor = static_cast<int>(qint64{position} * floors / count);
        asset.building = floor / scale_.floors + 1;
        asset.floor = floor % scale_.floors + 1;
        asset.room = position - static_cast<int>((qint64{floor} * count + floors - 1) / floors) + 1;
    }

    void AddConferenceRooms() {
        const QStringList& names = words_.Entries(QStringLiteral("conference rooms"));
        next_ = 1;
        for (int n = 0; n < scale_.conferenceRooms && next_ < firstOtherAsset; ++n) {
            if (next_ % ConferenceGapEvery == 0) {
                assets_.push_back({.id = next_++});
            }
            Asset& room = Add(AssetKind::ConferenceRoom, n, scale_.conferenceRooms);
            room.name = names[n];
            room.seats += random_.Percent(12) ? 40 : 0;
            room.description = QStringLiteral("Conference room, %1 seats, %2")
                                   .arg(room.seats)
                                   .arg(Word(QStringLiteral("equipment of a conference room")));
        }
    }

    // Offices, labs and small rooms lie side by side along the floors.
    void AddRoomsByFloor() {
        std::vector<AssetKind> kinds;
        for (const auto& [kind, count] : {std::pair(AssetKind::Office, scale_.offices - scale_.offices / 10),
                                          {AssetKind::VisitorOffice, scale_.offices / 10},
                                          {AssetKind::Lab, scale_.labs},
                                          {AssetKind::MeetingRoom, scale_.meetingRooms},
                                          {AssetKind::OtherRoom, scale_.otherRooms}}) {
            kinds.insert(kinds.end(), static_cast<size_t>(count), kind);
        }
        random_.Shuffle(kinds);
        int position = 0;
        for (const AssetKind kind : kinds) {
            NameByPlace(Add(kind, position++, static_cast<int>(kinds.size())),
                        kind == AssetKind::Lab ? QStringLiteral("L") : QString());
        }
    }

    // Equipment has no place.
    void AddEquipment() {
        const std::vector<QStringList> things = words_.Rows(QStringLiteral("equipment"));
        for (int n = 0; n < scale_.equipment; ++n) {
            const QStringList& thing = things[static_cast<size_t>(n) % things.size()];
            const int number = n / static_cast<int>(things.size()) + 1;
            Asset& asset = Add(AssetKind::Equipment, n, 0);
            asset.name = QStringLiteral("%1 %2").arg(thing[0]).arg(number);
            asset.description = thing[1];
        }
    }

    void AddExtensions() {
        const int first = scale_.extensions < 1000 ? 4101 : 20101;
        for (int n = 0; n < scale_.extensions; ++n) {
            Add(AssetKind::Extension, n, scale_.extensions).name = QStringLiteral("Ext. %1").arg(first + n);
        }
        for (int n = 0; n < scale_.guestExtensions; ++n) {
            Asset& line = Add(AssetKind::GuestExtension, n, scale_.guestExtensions);
            line.name = QStringLiteral("Ext. %1").arg(first + scale_.extensions + 99 + n);
            line.description = QStringLiteral("Guest Extension, B%1 %2").arg(line.building).arg(line.description);
        }
    }

    void AddUnused() {
        for (int n = 0; n < scale_.unused; ++n) {
            Asset& place = Add(AssetKind::Unused, n, scale_.unused);
            place.name = QStringLiteral("Unused %1").arg(n + 1);
            // Somebody typed the last one by hand, so the reports do not take it for a placeholder.
            if (n == scale_.unused - 1) {
                place.name = QStringLiteral("unused corner");
                place.description = QStringLiteral("Behind the copier, no door");
            }
        }
    }

    const House& house_;
    const Scale& scale_ = house_.scale;
    Random random_;
    WordFile words_{QStringLiteral("rooms.txt")};
    std::vector<Asset> assets_;
    int next_ = 1;
};

// Telephone wiring of a place; some is not known.
struct Wiring {
    Value jack, port, stationType, switchInterface, extension;
};

Wiring WireUp(const Asset& asset, const KindTraits& kind, Random& random, const WordFile& words) {
    Wiring wiring;
    if (asset.kind == AssetKind::Equipment || asset.kind == AssetKind::Unused || random.Percent(8)) {
        return wiring;
    }
    const int port = 1 + asset.id % 48;
    if (!random.Percent(6)) {
        wiring.jack = QStringLiteral("%1-%2-%3%4")
                          .arg(asset.building)
                          .arg(asset.floor)
                          .arg(asset.id % 1000, 3, 10, QLatin1Char('0'))
                          .arg(QChar(u'A' + random.Below(2)));
    }
    wiring.port = QStringLiteral("%1/%2").arg(asset.floor).arg(port, 2, 10, QLatin1Char('0'));
    if (!random.Percent(15)) {
        wiring.stationType = random.Pick(words.Entries(kind.stationTypes));
    }
    if (!random.Percent(25)) {
        wiring.switchInterface = QStringLiteral("SW%1-%2/%3").arg(asset.building).arg(asset.floor).arg(port);
    }
    const bool line = asset.kind == AssetKind::Extension || asset.kind == AssetKind::GuestExtension;
    if (line) {
        wiring.extension = asset.name.mid(asset.name.indexOf(u' ') + 1);
    } else if (kind.isPlace) {
        wiring.extension = QString::number((asset.id < 1000 ? 3000 : 30000) + asset.id);
    }
    return wiring;
}

void WriteAssetTable(const House& house, Random& random, RowSink& sink) {
    const WordFile words(QStringLiteral("rooms.txt"));
    sink.BeginTable("Asset", "AssetID Name Description Location LocationLvl LocationX LocationY Jack Port StationType "
                             "SwitchInterface DefaultExtension");
    bool locationMissing = false;
    for (const Asset& asset : house.assets) {
        if (asset.kind == AssetKind::Gone) {
            continue;
        }
        const KindTraits& kind = house.kinds.Of(asset.kind);
        const Wiring wiring = WireUp(asset, kind, random, words);
        Value location(kind.isPlace);
        if (!locationMissing && asset.kind == AssetKind::OtherRoom) {
            // Nobody ever said whether this one is a location.
            location = Value();
            locationMissing = true;
        }
        const bool placed = asset.building > 0;
        sink.Add({asset.id, asset.name, TextOrEmpty(asset.description), location, placed ? Value(asset.floor) : Value(),
                  placed ? Value(20 + asset.room % 24 * 35) : Value(),
                  placed ? Value(15 + (asset.room / 24 * 4 + static_cast<int>(asset.kind) % 4) * 45) : Value(),
                  wiring.jack, wiring.port, wiring.stationType, wiring.switchInterface, wiring.extension});
    }
}

void WriteEventTypes(const House& house, Random& random, RowSink& sink) {
    sink.BeginTable("Asset/Event", "AssetID EventType");
    for (const Asset& asset : house.assets) {
        const QStringList& types = house.kinds.Of(asset.kind).spaceTypes;
        for (qsizetype n = 0; n < types.size(); ++n) {
            // The usual type always; one asset in fifty allows nothing so far.
            if (asset.id % 50 != 49 && (n == 0 || random.Percent(70))) {
                sink.Add({asset.id, types[n]});
            }
        }
    }
}

void WriteAreas(const House& house, Random& random, RowSink& sink) {
    sink.BeginTable("Asset/Area", "AssetID AreaName");
    for (const Asset& asset : house.assets) {
        // Some rooms were never assigned, some only to their building.
        if (!house.kinds.Of(asset.kind).isPlace || random.Percent(3)) {
            continue;
        }
        const std::array<QString, 3> areas = AreasOf(asset);
        const int known = random.Percent(5) ? 1 : 3;
        for (int n = 0; n < known; ++n) {
            sink.Add({asset.id, areas[static_cast<size_t>(n)]});
        }
    }
}

} // namespace

std::vector<Asset> MakeAssets(const House& house) {
    return Builder(house).Build();
}

std::array<QString, 3> AreasOf(const Asset& asset) {
    if (asset.building == 0) {
        return {};
    }
    return {QStringLiteral("Building %1").arg(asset.building),
            QStringLiteral("B%1 level %2").arg(asset.building).arg(asset.floor),
            QStringLiteral("Zone %1").arg(QChar(u'A' + (asset.building * 2 + asset.room % 2) % 26))};
}

void WriteAssets(const House& house, RowSink& sink) {
    Random random = house.Draws(House::Subject::AssetRows);
    WriteAssetTable(house, random, sink);
    WriteEventTypes(house, random, sink);
    WriteAreas(house, random, sink);
}

} // namespace velmora::demo
