#include "demo/KindTable.h"

#include "demo/WordFile.h"

#include <algorithm>
#include <stdexcept>

namespace velmora::demo {

namespace {

const char* const kindNames[] = {"conference room", "training room",   "lab",        "meeting room", "desk",
                                 "office",          "visitors office", "other room", "equipment",    "extension",
                                 "guest extension", "unused",          "gone"};
const char* const spanNames[] = {"meeting", "interview",  "half day",  "course", "big event",
                                 "visit",   "laboratory", "desk days", "loan",   "weeks"};

// The enumerator whose name this is.
template <typename Enum, size_t Count>
Enum ByName(const QString& name, const char* const (&names)[Count]) {
    const auto* const found =
        std::find_if(std::begin(names), std::end(names), [&](const char* each) { return name == QLatin1String(each); });
    if (found == std::end(names)) {
        throw std::logic_error("kinds.txt: unknown word " + name.toStdString());
    }
    return static_cast<Enum>(found - std::begin(names));
}

} // namespace

KindTable::KindTable() {
    const WordFile file(QStringLiteral("kinds.txt"));
    for (const QStringList& row : file.Rows(QStringLiteral("kinds"))) {
        kinds_.push_back({.kind = ByName<AssetKind>(row[0], kindNames),
                          .isPlace = row[1] == QLatin1String("yes"),
                          .eventsInHundredDays = row[2].toInt(),
                          .spaceTypes = row[3].split(QStringLiteral(", "), Qt::SkipEmptyParts),
                          .stationTypes = row[4],
                          .descriptions = row[5],
                          .seats = {row[6].toInt(), row[7].toInt(), row[8].toInt()},
                          .events = {}});
    }
    for (const QStringList& row : file.Rows(QStringLiteral("events"))) {
        const auto kind = ByName<AssetKind>(row[0], kindNames);
        std::find_if(kinds_.begin(), kinds_.end(), [&](const KindTraits& each) {
            return each.kind == kind;
        })->events.push_back({row[1], row[2].toInt(), ByName<Span>(row[3], spanNames), row[4].toInt(), row[5].toInt()});
    }
}

const KindTraits& KindTable::Of(AssetKind kind) const {
    return *std::find_if(kinds_.begin(), kinds_.end(), [&](const KindTraits& each) { return each.kind == kind; });
}

} // namespace velmora::demo
