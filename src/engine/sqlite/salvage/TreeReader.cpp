#include "engine/sqlite/salvage/TreeReader.h"

#include <algorithm>

namespace velmora::engine::salvage {

namespace {

struct Branch {
    quint32 page = 0;
    KeyRange keys;
};

// True when the row numbers ascend within the range.
bool KeysFit(const BtreePage& page, KeyRange range) {
    bool first = true;
    qint64 before = 0;
    for (const Cell& cell : page.cells) {
        if (!range.Contains(cell.key) || (!first && cell.key <= before)) {
            return false;
        }
        first = false;
        before = cell.key;
    }
    return true;
}

bool BelongsInto(const BtreePage& page, KeyRange range) {
    // The last child holds row numbers above the last cell's.
    const bool leavesRoom = page.IsLeaf() || page.cells.empty() || page.cells.back().key < range.last;
    return page.IsTable() && leavesRoom && KeysFit(page, range);
}

// The children of an interior page, the last one first. A child holds the row numbers up to its cell's.
void AddChildren(const BtreePage& page, KeyRange range, std::vector<Branch>& branches) {
    std::vector<Branch> children;
    qint64 first = range.first;
    for (const Cell& cell : page.cells) {
        children.push_back({cell.child, {first, cell.key}});
        first = cell.key + 1;
    }
    children.push_back({page.rightChild, {first, range.last}});
    branches.insert(branches.end(), children.rbegin(), children.rend());
}

} // namespace

TreeReader::TreeReader(const PageFile& file) : file_(file), claimed_(size_t{file.PageCount()} + 1), free_(claimed_) {
    FindFreePages();
}

bool TreeReader::Load(quint32 number) {
    return file_.Read(number, bytes_) && page_.Parse(bytes_, number, file_.Usable());
}

std::vector<KeyRange> TreeReader::WalkTable(quint32 root, const TakeLeaf& take) {
    std::vector<KeyRange> holes;
    std::vector<Branch> branches = {{root, {}}};
    while (!branches.empty()) {
        const Branch branch = branches.back();
        branches.pop_back();
        if (!Load(branch.page) || claimed_[branch.page] || !BelongsInto(page_, branch.keys) ||
            (page_.IsLeaf() && !take(page_))) {
            holes.push_back(branch.keys);
            continue;
        }
        claimed_[branch.page] = true;
        if (!page_.IsLeaf()) {
            AddChildren(page_, branch.keys, branches);
        }
    }
    return holes;
}

bool TreeReader::WalkIndex(quint32 root, const std::function<void(const Cell&)>& take) {
    bool isComplete = true;
    std::vector<quint32> branches = {root};
    while (!branches.empty()) {
        const quint32 number = branches.back();
        branches.pop_back();
        if (!Load(number) || claimed_[number] || page_.IsTable()) {
            isComplete = false;
            continue;
        }
        claimed_[number] = true;
        for (const Cell& cell : page_.cells) {
            if (!page_.IsLeaf()) {
                branches.push_back(cell.child);
            }
            take(cell);
        }
        if (!page_.IsLeaf()) {
            branches.push_back(page_.rightChild);
        }
    }
    return isComplete;
}

std::optional<Bytes> TreeReader::Record(const Cell& cell) {
    if (cell.overflow == 0) {
        return cell.local.size() == cell.recordSize ? std::optional(cell.local) : std::nullopt;
    }
    if (cell.recordSize > quint64{file_.PageCount()} * file_.PageSize()) {
        return std::nullopt;
    }
    record_.assign(cell.local.begin(), cell.local.end());
    quint32 next = cell.overflow;
    while (record_.size() < cell.recordSize) {
        // A page of a tree cannot also hold the rest of a record.
        if (!file_.Read(next, overflowPage_) || claimed_[next]) {
            return std::nullopt;
        }
        const size_t take = std::min<size_t>(cell.recordSize - record_.size(), file_.Usable() - 4);
        record_.insert(record_.end(), overflowPage_.begin() + 4,
                       overflowPage_.begin() + 4 + static_cast<qptrdiff>(take));
        next = BigEndian32(overflowPage_, 0);
    }
    return next == 0 ? std::optional<Bytes>(record_) : std::nullopt;
}

// Follows the list of free pages: each of its pages names the next one and a number of further free pages.
void TreeReader::FindFreePages() {
    quint32 trunk = file_.FirstFreePage();
    while (trunk != 0 && file_.Read(trunk, bytes_) && !free_[trunk]) {
        free_[trunk] = true;
        const quint32 count = BigEndian32(bytes_, 4);
        if (count > file_.Usable() / 4 - 2) {
            return;
        }
        for (quint32 index = 0; index < count; ++index) {
            const quint32 leaf = BigEndian32(bytes_, 8 + size_t{4} * index);
            if (leaf >= 1 && leaf <= file_.PageCount()) {
                free_[leaf] = true;
            }
        }
        trunk = BigEndian32(bytes_, 0);
    }
}

std::vector<StrayLeaf> TreeReader::StrayLeaves() {
    std::vector<StrayLeaf> leaves;
    for (quint32 number = 1; number <= file_.PageCount(); ++number) {
        if (!claimed_[number] && !free_[number] && Load(number) && page_.kind == PageKind::TableLeaf &&
            !page_.cells.empty() && KeysFit(page_, {})) {
            leaves.push_back({number, {page_.cells.front().key, page_.cells.back().key}});
        }
    }
    return leaves;
}

void TreeReader::LookAtStray(quint32 page, const std::function<void(const BtreePage&)>& look) {
    if (Load(page)) {
        look(page_);
    }
}

bool TreeReader::TakeStray(quint32 page, const TakeLeaf& take) {
    if (claimed_[page] || !Load(page) || !take(page_)) {
        return false;
    }
    claimed_[page] = true;
    return true;
}

} // namespace velmora::engine::salvage
