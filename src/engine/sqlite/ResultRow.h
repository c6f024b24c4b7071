#pragma once

#include "engine/Recordset.h"

#include <sqlite3.h>

#include <string_view>

namespace velmora::engine::sqlite {

// The values of a statement's current row.
//
// Asking the store for a value by its column costs more than reading the value, and a packed row needs them all. The
// store keeps the values of a row side by side, so this asks for the first two and the last and finds the others in
// between. Where a store were to keep them elsewhere, the last would not be in its place, and each is asked for.
class ResultRow {
public:
    ResultRow(sqlite3_stmt* statement, int columns) : statement_(statement) {
        if (columns < fewColumns) {
            return;
        }
        const auto* first = Address(0);
        const auto stride = Address(1) - first;
        if (Address(columns - 1) == first + stride * (columns - 1)) {
            first_ = first;
            stride_ = stride;
        }
    }

    sqlite3_value* Value(int column) const {
        if (first_ == nullptr) {
            return sqlite3_column_value(statement_, column);
        }
        return reinterpret_cast<sqlite3_value*>(const_cast<char*>(first_ + stride_ * column));
    }

private:
    static constexpr int fewColumns = 4;

    const char* Address(int column) const {
        return reinterpret_cast<const char*>(sqlite3_column_value(statement_, column));
    }

    sqlite3_stmt* statement_;
    const char* first_ = nullptr;
    std::ptrdiff_t stride_ = 0;
};

} // namespace velmora::engine::sqlite
