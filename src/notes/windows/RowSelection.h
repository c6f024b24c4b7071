#pragma once

#include <algorithm>
#include <vector>

namespace velmora {

// The selected rows of a grid, in the order in which they were selected.
class RowSelection {
public:
    const std::vector<int>& Rows() const { return rows_; }
    bool Contains(int row) const { return std::find(rows_.begin(), rows_.end(), row) != rows_.end(); }

    void Clear() { rows_.clear(); }
    void Add(int row) {
        if (!Contains(row)) {
            rows_.push_back(row);
        }
    }
    void Remove(int row) { std::erase(rows_, row); }
    void Toggle(int row) {
        if (Contains(row)) {
            Remove(row);
        } else {
            rows_.push_back(row);
        }
    }
    void SelectAll(int count) {
        rows_.resize(static_cast<size_t>(count));
        for (int row = 0; row < count; ++row) {
            rows_[static_cast<size_t>(row)] = row;
        }
    }

private:
    std::vector<int> rows_;
};

} // namespace velmora
