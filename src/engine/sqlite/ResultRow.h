#pragma once

#include <sqlite3.h>

#include <cstddef>

namespace velmora::engine::sqlite {

// The values of a statement's current row, one after the other.
//
// Asking the store for a value by its column costs more than reading the value, and a packed row needs them all. The
// store keeps the values of a row side by side, so this asks for the first two and the last, and finds the others in
// between. Where a store were to keep them elsewhere, the last would not be in its place.
class ResultRow {
public:
    ResultRow(sqlite3_stmt* statement, int columns) {
        if (columns < fewColumns) {
            return;
        }
        const char* first = Address(statement, 0);
        stride_ = Address(statement, 1) - first;
        if (Address(statement, columns - 1) == first + stride_ * (columns - 1)) {
            next_ = first;
        }
    }

    // False when the values have to be asked for by their columns.
    explicit operator bool() const { return next_ != nullptr; }
    sqlite3_value* Next() {
        auto* value = reinterpret_cast<sqlite3_value*>(const_cast<char*>(next_));
        next_ += stride_;
        return value;
    }

private:
    static constexpr int fewColumns = 4;

    static const char* Address(sqlite3_stmt* statement, int column) {
        return reinterpret_cast<const char*>(sqlite3_column_value(statement, column));
    }

    const char* next_ = nullptr;
    std::ptrdiff_t stride_ = 0;
};

} // namespace velmora::engine::sqlite
