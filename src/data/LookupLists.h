#pragma once

#include "data/AssetInfo.h"

#include <QHash>

#include <memory>
#include <vector>

namespace velmora {

// An ordered collection of assets, each under its own key. Keys compare without regard to letter case, of any
// letter. Whoever holds an item shares it with the collection.
class AssetCollection {
public:
    using Item = std::shared_ptr<AssetInfo>;

    int Count() const { return static_cast<int>(items_.size()); }
    // By position from 1; null where there is none.
    Item At(int position) const {
        return position >= 1 && position <= Count() ? items_[static_cast<size_t>(position) - 1] : nullptr;
    }
    // By key (see AssetKey); null where there is none.
    Item Find(const QString& key) const { return At(byKey_.value(key.toCaseFolded())); }
    // Appends the item; false, and nothing done, when the key is taken.
    [[nodiscard]] bool Add(const Item& item, const QString& key);
    void Clear();
    void Reserve(qsizetype count) { byKey_.reserve(count); }

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<Item> items_;
    // Positions from 1.
    QHash<QString, int> byKey_;
};

// The current program's assets: once filled, and where numbers start at 1, position n holds asset n.
AssetCollection& Assets();

// Fills the program's lookup lists, of which only the assets are kept, and shows its steps in the progress window with
// percentages of that range. The window stays open.
void LoadLookupLists(engine::Database& database, double startPercent = 0, double endPercent = 100);

// Fills Assets() from the database. Numbers without an asset get a placeholder named "Missing n"; an asset whose name
// is taken is named "ERROR n" in memory, and the person gets a message. Failures are reported with module "Internal
// Data" and procedure "Fill Asset Collection".
void FillAssetCollection(engine::Database& database);

} // namespace velmora
