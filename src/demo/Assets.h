#pragma once

#include "base/Value.h"
#include "demo/KindTable.h"
#include "demo/Random.h"
#include "demo/RowSink.h"
#include "demo/Scale.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace velmora::demo {

struct Asset {
    int id = 0;
    AssetKind kind = AssetKind::Gone;
    QString name;
    QString description;
    int building = 0; // 1, 2, ...; 0 for what has no fixed place
    int floor = 0;
    int room = 0; // its number on the floor
    int seats = 0;
};

// All assets of a site in the order of their numbers, those that are gone included.
std::vector<Asset> MakeAssets(const Scale& scale, Random random);

// The three areas a place belongs to: its building, its floor and its evacuation zone. All empty without a building.
std::array<QString, 3> AreasOf(const Asset& asset);

// The rows of [Asset] and the link tables that say what an asset may be used for.
void WriteAssets(const std::vector<Asset>& assets, Random random, RowSink& sink);

} // namespace velmora::demo
