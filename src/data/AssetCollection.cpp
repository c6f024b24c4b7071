#include "data/AssetCollection.h"

#include "base/Program.h"

namespace velmora {

namespace {

// A key as it is compared. Most names are plain letters, which need not go through the tables of all scripts.
QString Folded(const QString& key) {
    QString folded(key.size(), Qt::Uninitialized);
    QChar* out = folded.data();
    for (const QChar letter : key) {
        constexpr char16_t firstOther = 128;
        if (letter >= firstOther) {
            return key.toCaseFolded();
        }
        *out++ = letter >= u'A' && letter <= u'Z' ? QChar(letter.unicode() + (u'a' - u'A')) : letter;
    }
    return folded;
}

} // namespace

AssetCollection::Item AssetCollection::At(int position) const {
    return position >= 1 && position <= Count() ? items_[static_cast<size_t>(position) - 1] : nullptr;
}

AssetCollection::Item AssetCollection::Find(const QString& key) const {
    const auto found = byKey_.constFind(Folded(key));
    return found == byKey_.constEnd() ? nullptr : items_[static_cast<size_t>(*found)];
}

bool AssetCollection::Add(Item item, const QString& key) {
    // One look-up: a key that is new makes the hash grow.
    const qsizetype known = byKey_.size();
    int& position = byKey_[Folded(key)];
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
