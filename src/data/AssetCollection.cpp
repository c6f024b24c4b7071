#include "data/AssetCollection.h"

#include "base/Program.h"

namespace velmora {

AssetCollection::Item AssetCollection::At(int position) const {
    return position >= 1 && position <= Count() ? items_[static_cast<size_t>(position) - 1] : nullptr;
}

AssetCollection::Item AssetCollection::Find(const QString& key) const {
    const auto found = byKey_.constFind(key.toCaseFolded());
    return found == byKey_.constEnd() ? nullptr : items_[static_cast<size_t>(*found)];
}

bool AssetCollection::Add(Item item, const QString& key) {
    // One look-up: a key that is new makes the hash grow.
    const qsizetype known = byKey_.size();
    int& position = byKey_[key.toCaseFolded()];
    if (byKey_.size() == known) {
        return false;
    }
    position = Count();
    items_.push_back(std::move(item));
    return true;
}

void AssetCollection::Clear() {
    items_.clear();
    byKey_.clear();
}

void AssetCollection::Reserve(qsizetype count) {
    items_.reserve(static_cast<size_t>(count));
    byKey_.reserve(count);
}

AssetCollection& Assets() {
    return CurrentProgram().Part<AssetCollection>();
}

} // namespace velmora
