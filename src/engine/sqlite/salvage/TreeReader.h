#pragma once

#include "engine/sqlite/salvage/BtreePage.h"
#include "engine/sqlite/salvage/PageFile.h"

#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace velmora::engine::salvage {

// Row numbers from `first` to `last`, both included.
struct KeyRange {
    qint64 first = std::numeric_limits<qint64>::min();
    qint64 last = std::numeric_limits<qint64>::max();

    bool Contains(qint64 key) const { return first <= key && key <= last; }
};

// A page with rows that no readable page leads to.
struct StrayLeaf {
    quint32 page = 0;
    KeyRange keys;
};

// Reads the trees of a damaged file. Each page belongs to the first tree that reaches it, so every walk ends, whatever
// the pages say.
class TreeReader {
public:
    explicit TreeReader(const PageFile& file);

    // Takes a leaf with its rows in ascending order; false when they cannot be rows of the tree it was found in.
    using TakeLeaf = std::function<bool(const BtreePage&)>;

    // Walks the tree of a table in the order of the row numbers. Returns the ranges whose rows could not be reached:
    // those of unreadable pages, and of pages that `take` refuses.
    std::vector<KeyRange> WalkTable(quint32 root, const TakeLeaf& take);

    // Gives every entry of an index's tree (also the rows of a table without row numbers), in no particular order.
    // False when some could not be reached.
    bool WalkIndex(quint32 root, const std::function<void(const Cell&)>& take);

    // The entry's whole record; none when a page that it goes on to is damaged. Good until the next call.
    std::optional<Bytes> Record(const Cell& cell);

    // Pages in no tree with rows on them, by page number. Free pages, whose rows were deleted, do not count.
    std::vector<StrayLeaf> StrayLeaves();
    void LookAtStray(quint32 page, const std::function<void(const BtreePage&)>& look);
    // Gives a stray leaf to a tree; false when it is refused.
    bool TakeStray(quint32 page, const TakeLeaf& take);

private:
    bool Load(quint32 number);
    void FindFreePages();

    const PageFile& file_;
    // By page number: in a tree that was walked, and in the list of free pages (which may itself be damaged: a tree
    // that reaches such a page has it).
    std::vector<bool> claimed_;
    std::vector<bool> free_;
    // The page that Load read, taken apart, and its bytes.
    BtreePage page_;
    std::vector<unsigned char> bytes_;
    std::vector<unsigned char> overflowPage_;
    std::vector<unsigned char> record_;
};

} // namespace velmora::engine::salvage
