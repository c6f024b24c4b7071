#pragma once

#include "engine/dialect/Ast.h"

#include <functional>

namespace velmora::engine::dialect {

// Whether two resolved expressions say the same. `usesLiterals` is set when they do only because their literals are
// equal. Expressions with a select in them never count as the same.
bool SameExpression(const Expression& first, const Expression& second, bool& usesLiterals);

bool IsAggregate(const Expression& expression);

// The operands, and every expression of a select inside.
void ForEachChild(const Expression& expression, const std::function<void(const Expression&)>& visit);

} // namespace velmora::engine::dialect
