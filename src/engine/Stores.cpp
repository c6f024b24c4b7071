#include "engine/Stores.h"

#include "engine/sqlite/FilePlace.h"

#include <QFileInfo>

namespace velmora::engine {

namespace {

struct StoreKind {
    QStringView fileName;
    std::unique_ptr<DatabasePlace> (*at)(const QString& file);
};

template <typename Place>
std::unique_ptr<DatabasePlace> At(const QString& file) {
    return std::make_unique<Place>(file);
}

// A second store has its entry here.
constexpr StoreKind kinds[] = {
    {u"Velmora.MDB", &At<sqlite::FilePlace>},
};

} // namespace

std::unique_ptr<DatabasePlace> PlaceIn(const QString& folder) {
    for (const StoreKind& kind : kinds) {
        if (const QString file = folder + kind.fileName.toString(); QFileInfo::exists(file)) {
            return kind.at(file);
        }
    }
    return kinds[0].at(folder + kinds[0].fileName.toString());
}

std::unique_ptr<Database> Database::Open(const QString& path, const OpenOptions& options) {
    return sqlite::FilePlace(path).Open(options);
}

} // namespace velmora::engine
