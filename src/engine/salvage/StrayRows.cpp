#include "engine/salvage/TableSource.h"

#include <algorithm>

namespace velmora::engine::salvage {

namespace {

struct OwnedLeaf {
    StrayLeaf leaf;
    TableSource* owner = nullptr;
    // Which hole of the owner's it fits into.
    size_t hole = 0;
    bool isContested = false;
};

// The tables whose holes the leaf fits into.
std::vector<OwnedLeaf> PossibleOwners(TreeReader& reader, const StrayLeaf& leaf, std::vector<TableSource>& sources) {
    std::vector<OwnedLeaf> owners;
    for (TableSource& source : sources) {
        for (size_t hole = 0; hole < source.holes.size(); ++hole) {
            const KeyRange& range = source.holes[hole];
            if (!range.Contains(leaf.keys.first) || !range.Contains(leaf.keys.last)) {
                continue;
            }
            bool fits = false;
            reader.LookAtStray(leaf.page, [&](const BtreePage& page) { fits = source.copier->FitsLeaf(reader, page); });
            if (fits) {
                owners.push_back({leaf, &source, hole});
            }
        }
    }
    return owners;
}

// Of two pages with the same row numbers one is an old copy, and nothing tells which: neither is used.
void MarkContested(std::vector<OwnedLeaf>& leaves) {
    std::sort(leaves.begin(), leaves.end(), [](const OwnedLeaf& one, const OwnedLeaf& other) {
        return std::tuple(one.owner, one.hole, one.leaf.keys.first) <
               std::tuple(other.owner, other.hole, other.leaf.keys.first);
    });
    OwnedLeaf* widest = nullptr;
    for (OwnedLeaf& leaf : leaves) {
        const bool isSameHole = widest != nullptr && widest->owner == leaf.owner && widest->hole == leaf.hole;
        if (isSameHole && leaf.leaf.keys.first <= widest->leaf.keys.last) {
            widest->isContested = true;
            leaf.isContested = true;
        }
        if (!isSameHole || leaf.leaf.keys.last > widest->leaf.keys.last) {
            widest = &leaf;
        }
    }
}

} // namespace

qint64 CopyStrayRows(TreeReader& reader, std::vector<TableSource>& sources) {
    const auto hasHoles = [](const TableSource& source) { return !source.holes.empty(); };
    if (std::none_of(sources.begin(), sources.end(), hasHoles)) {
        return 0;
    }
    const std::vector<StrayLeaf> strays = reader.StrayLeaves();
    std::vector<OwnedLeaf> owned;
    for (const StrayLeaf& leaf : strays) {
        const std::vector<OwnedLeaf> owners = PossibleOwners(reader, leaf, sources);
        if (owners.size() == 1) {
            owned.push_back(owners.front());
        }
    }
    MarkContested(owned);
    auto left = static_cast<qint64>(strays.size());
    for (const OwnedLeaf& leaf : owned) {
        const auto take = [&](const BtreePage& page) { return leaf.owner->copier->TakeLeaf(reader, page); };
        if (!leaf.isContested && reader.TakeStray(leaf.leaf.page, take)) {
            --left;
        }
    }
    return left;
}

} // namespace velmora::engine::salvage
