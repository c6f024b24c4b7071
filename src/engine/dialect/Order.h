#pragma once

#include "engine/dialect/Ast.h"

#include <vector>

namespace velmora::engine::dialect {

// One term of the order that a query's rows come in.
struct OrderKey {
    enum class Kind {
        Output,     // the result column `index`
        Expression, // `expression`
        Field,      // the field `index` of the table `leaf`
        RowNumber,  // the row number in the table `leaf`
        Inherited,  // the term `index` of the order of the query `leaf`
    };
    Kind kind = Kind::Expression;
    int index = -1;
    const Expression* expression = nullptr;
    const Source* leaf = nullptr;
    FieldType type = FieldType::Unknown;
    bool descending = false;
};

// The whole order: what ORDER BY says, and behind it what the text leaves open. The rows of one table come by its key,
// those of one stored query or sub-select as it orders them, groups by what they are grouped by, rows without doubles
// by their columns.
std::vector<OrderKey> OrderOf(const Query& query);

// The order of one select of a UNION by itself, which matters for its TOP.
std::vector<OrderKey> OrderOfMember(const Query& query, const Select& select);

// Rows that are compared with each other (DISTINCT, UNION) are ordered by their result columns only.
inline bool ComparesRows(const Query& query) {
    return query.selects.size() > 1 || query.selects.front().distinct;
}

} // namespace velmora::engine::dialect
