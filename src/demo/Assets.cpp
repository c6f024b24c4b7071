#include "demo/Assets.h"

#include "demo/WordFile.h"

namespace velmora::demo {

namespace {

constexpr int FirstOtherNumber = 256; // below it: the conference rooms
constexpr int GoneEvery = 97;         // one number in so many was deleted
constexpr int ConferenceGapEvery = 9; // as many conference rooms were given up

// Gives numbers, buildings and names to one asset after the other.
class Builder {
public:
    Builder(const Scale& scale, Random random)
        : scale_(scale), random_(random), words_(WordFile::Load(QStringLiteral("rooms.txt"))) {}

    std::vector<Asset> Build() {
        AddConferenceRooms();
        next_ = FirstOtherNumber;
        AddTrainingRooms();
        AddRoomsByFloor();
        AddDesks();
        AddEquipment();
        AddExtensions();
        AddUnused();
        return std::move(assets_);
    }

private:
    QString Word(const char* section) { return random_.Pick(words_.Entries(QLatin1String(section))); }

    Asset& Add(AssetKind kind, QString name, QString description) {
        if (next_ > FirstOtherNumber && next_ % GoneEvery == 0) {
            assets_.push_back({.id = next_++, .kind = AssetKind::Gone, .name = {}, .description = {}});
        }
        assets_.push_back(
            {.id = next_++, .kind = kind, .name = std::move(name), .description = std::move(description)});
        return assets_.back();
    }

    // The place of the position-th of `count` rooms that are spread over all floors in order.
    void Place(Asset& asset, int position, int count) const {
        const int floors = scale_.buildings * scale_.floors;
        const int floor = static_cast<int>(qint64{position} * floors / count);
        asset.building = floor / scale_.floors + 1;
        asset.floor = floor % scale_.floors + 1;
        asset.room = position - static_cast<int>((qint64{floor} * count + floors - 1) / floors) + 1;
    }

    void AddConferenceRooms() {
        const QStringList& names = words_.Entries(QStringLiteral("conference rooms"));
        next_ = 1;
        for (int n = 0; n < scale_.conferenceRooms && next_ < FirstOtherNumber; ++n, ++next_) {
            if (next_ % ConferenceGapEvery == 0) {
                assets_.push_back({.id = next_++, .kind = AssetKind::Gone, .name = {}, .description = {}});
            }
            const int seats = 8 + 2 * random_.Below(10) + (random_.Percent(12) ? 40 : 0);
            Asset room{.id = next_, .kind = AssetKind::ConferenceRoom, .name = names[n], .description = {}};
            room.description =
                QStringLiteral("Conference room, %1 seats, %2").arg(seats).arg(Word("equipment of a conference room"));
            room.seats = seats;
            Place(room, n, scale_.conferenceRooms);
            assets_.push_back(room);
        }
    }

    void AddTrainingRooms() {
        for (int n = 0; n < scale_.trainingRooms; ++n) {
            Asset& room =
                Add(AssetKind::TrainingRoom, QStringLiteral("Training %1").arg(n + 1), Word("training rooms"));
            room.seats = 12 + 2 * random_.Below(9);
            Place(room, n, scale_.trainingRooms);
        }
    }

    // Offices, labs and small rooms lie side by side along the floors.
    void AddRoomsByFloor() {
        std::vector<AssetKind> kinds;
        kinds.insert(kinds.end(), static_cast<size_t>(scale_.offices - scale_.offices / 10), AssetKind::Office);
        kinds.insert(kinds.end(), static_cast<size_t>(scale_.offices / 10), AssetKind::VisitorOffice);
        kinds.insert(kinds.end(), static_cast<size_t>(scale_.labs), AssetKind::Lab);
        kinds.insert(kinds.end(), static_cast<size_t>(scale_.meetingRooms), AssetKind::MeetingRoom);
        kinds.insert(kinds.end(), static_cast<size_t>(scale_.otherRooms), AssetKind::OtherRoom);
        random_.Shuffle(kinds);
        for (int n = 0; n < static_cast<int>(kinds.size()); ++n) {
            Asset& room = Add(kinds[static_cast<size_t>(n)], {}, {});
            Place(room, n, static_cast<int>(kinds.size()));
            room.name = QStringLiteral("B%1-%2%3%4")
                            .arg(room.building)
                            .arg(room.kind == AssetKind::Lab ? QStringLiteral("L") : QString())
                            .arg(room.floor)
                            .arg(room.room, 2, 10, QLatin1Char('0'));
            DescribeRoom(room);
        }
    }

    void DescribeRoom(Asset& room) {
        switch (room.kind) {
        case AssetKind::Lab:
            room.description = Word("lab rooms");
            room.seats = 4 + random_.Below(8);
            break;
        case AssetKind::MeetingRoom:
            room.description = Word("small rooms");
            room.seats = 4 + 2 * random_.Below(4);
            break;
        case AssetKind::OtherRoom:
            room.description = Word("other rooms");
            room.seats = random_.Below(10);
            break;
        case AssetKind::VisitorOffice:
            room.description = QStringLiteral("Visitors' office, 2 desks");
            room.seats = 2;
            break;
        default:
            room.description = Word("offices");
            room.seats = 1 + random_.Below(2);
        }
    }

    void AddDesks() {
        for (int n = 0; n < scale_.desks; ++n) {
            Asset& desk = Add(AssetKind::Desk, {}, Word("desks"));
            Place(desk, n, scale_.desks);
            desk.name =
                QStringLiteral("B%1-D%2%3").arg(desk.building).arg(desk.floor).arg(desk.room, 2, 10, QLatin1Char('0'));
            desk.seats = 1;
        }
    }

    void AddEquipment() {
        const std::vector<QStringList> things = words_.Rows(QStringLiteral("equipment"));
        for (int n = 0; n < scale_.equipment; ++n) {
            const QStringList& thing = things[static_cast<size_t>(n) % things.size()];
            const int number = n / static_cast<int>(things.size()) + 1;
            Add(AssetKind::Equipment, QStringLiteral("%1 %2").arg(thing[0]).arg(number), thing[1]);
        }
    }

    void AddExtensions() {
        const int first = scale_.extensions < 1000 ? 4101 : 20101;
        for (int n = 0; n < scale_.extensions; ++n) {
            Asset& line = Add(AssetKind::Extension, QStringLiteral("Ext. %1").arg(first + n), Word("extension uses"));
            Place(line, n, scale_.extensions);
        }
        for (int n = 0; n < scale_.guestExtensions; ++n) {
            Asset& line =
                Add(AssetKind::GuestExtension, QStringLiteral("Ext. %1").arg(first + scale_.extensions + 99 + n), {});
            Place(line, n, scale_.guestExtensions);
            line.description =
                QStringLiteral("Guest Extension, B%1 %2").arg(line.building).arg(Word("guest extension places"));
        }
    }

    void AddUnused() {
        for (int n = 0; n < scale_.unused; ++n) {
            // Somebody typed the last one by hand, so the reports do not take it for a placeholder.
            const bool byHand = n == scale_.unused - 1;
            Asset& place = Add(AssetKind::Unused,
                               byHand ? QStringLiteral("unused corner") : QStringLiteral("Unused %1").arg(n + 1),
                               byHand ? QStringLiteral("Behind the copier, no door") : QString());
            Place(place, n, scale_.unused);
        }
    }

    const Scale& scale_;
    Random random_;
    WordFile words_;
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

void WriteAssetTable(const std::vector<Asset>& assets, const KindTable& kinds, Random& random, RowSink& sink) {
    const WordFile words = WordFile::Load(QStringLiteral("rooms.txt"));
    sink.BeginTable("Asset", "AssetID Name Description Location LocationLvl LocationX LocationY Jack Port StationType "
                             "SwitchInterface DefaultExtension");
    bool locationMissing = false;
    for (const Asset& asset : assets) {
        if (asset.kind == AssetKind::Gone) {
            continue;
        }
        const KindTraits& kind = kinds.Of(asset.kind);
        const Wiring wiring = WireUp(asset, kind, random, words);
        Value location(kind.isPlace);
        if (!locationMissing && asset.kind == AssetKind::OtherRoom) {
            // Nobody ever said whether this one is a location.
            location = Value();
            locationMissing = true;
        }
        const bool placed = asset.building > 0;
        sink.Add({Value(asset.id), Value(asset.name), asset.description.isEmpty() ? Value() : Value(asset.description),
                  location, placed ? Value(asset.floor) : Value(), placed ? Value(20 + asset.room % 24 * 35) : Value(),
                  placed ? Value(15 + (asset.room / 24 * 4 + static_cast<int>(asset.kind) % 4) * 45) : Value(),
                  wiring.jack, wiring.port, wiring.stationType, wiring.switchInterface, wiring.extension});
    }
}

void WriteEventTypes(const std::vector<Asset>& assets, const KindTable& kinds, Random& random, RowSink& sink) {
    sink.BeginTable("Asset/Event", "AssetID EventType");
    for (const Asset& asset : assets) {
        const QStringList& types = kinds.Of(asset.kind).spaceTypes;
        for (qsizetype n = 0; n < types.size(); ++n) {
            // The usual type always; one asset in fifty allows nothing so far.
            if (asset.id % 50 != 49 && (n == 0 || random.Percent(70))) {
                sink.Add({Value(asset.id), Value(types[n])});
            }
        }
    }
}

void WriteAreas(const std::vector<Asset>& assets, const KindTable& kinds, Random& random, RowSink& sink) {
    sink.BeginTable("Asset/Area", "AssetID AreaName");
    for (const Asset& asset : assets) {
        // Some rooms were never assigned, some only to their building.
        if (!kinds.Of(asset.kind).isPlace || random.Percent(3)) {
            continue;
        }
        const std::array<QString, 3> areas = AreasOf(asset);
        const int known = random.Percent(5) ? 1 : 3;
        for (int n = 0; n < known; ++n) {
            sink.Add({Value(asset.id), Value(areas[static_cast<size_t>(n)])});
        }
    }
}

} // namespace

std::vector<Asset> MakeAssets(const Scale& scale, Random random) {
    return Builder(scale, random).Build();
}

std::array<QString, 3> AreasOf(const Asset& asset) {
    if (asset.building == 0) {
        return {};
    }
    return {QStringLiteral("Building %1").arg(asset.building),
            QStringLiteral("B%1 level %2").arg(asset.building).arg(asset.floor),
            QStringLiteral("Zone %1").arg(QChar(u'A' + (asset.building * 2 + asset.room % 2) % 26))};
}

void WriteAssets(const std::vector<Asset>& assets, Random random, RowSink& sink) {
    const KindTable kinds;
    WriteAssetTable(assets, kinds, random, sink);
    WriteEventTypes(assets, kinds, random, sink);
    WriteAreas(assets, kinds, random, sink);
}

} // namespace velmora::demo
