#pragma once

#include <algorithm>
#include <numeric>
#include <vector>

namespace velmora {

// The selected rows of a grid, in the order in which they were selected.
class RowSelection {
public:
    const std::vector<int>& Rows() const { return rows_; }
    bool Contains(int row) const { return std::find(rows_.begin(), rows_.end(), row) != rows_.end(); }

    void Clear() { rows_.clear(); }
    void Toggle(int row) {
        if (std::erase(rows_, row) == 0) {
            rows_.push_back(row);
        }
    }
    // In that direction, both ends included.
    void AddRange(int from, int to) {
        for (int row = from;; row += from < to ? 1 : -1) {
            if (!Contains(row)) {
                rows_.push_back(row);
            }
            if (row == to) {
                return;
            }
        }
    }
    void SelectAll(int count) {
        rows_.resize(static_cast<size_t>(count));
        std::iota(rows_.begin(), rows_.end(), 0);
    }

private:
    std::vector<int> rows_;
};

} // namespace velmora
