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
    Item At(int position) const;
    // By key (see AssetKey); null where there is none.
    Item Find(const QString& key) const;
    // Appends the item; false, and nothing done, when the key is taken.
    [[nodiscard]] bool Add(Item item, const QString& key);
    void Clear();
    void Reserve(qsizetype count);

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<Item> items_;
    // Position from 0 by folded key.
    QHash<QString, int> byKey_;
};

// The current program's assets: once filled, and where numbers start at 1, position n holds asset n.
AssetCollection& Assets();

} // namespace velmora
