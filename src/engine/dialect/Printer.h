#pragma once

#include "engine/dialect/Ast.h"

#include <QString>

namespace velmora::engine::dialect {

// A parsed statement as a text of the dialect again, in one canonical form: reading that text gives the same statement.
QString Print(const Statement& statement);

// One expression in that form; what stands inside of another operator is in parentheses where it must be.
QString Print(const Expression& expression);

} // namespace velmora::engine::dialect
