#pragma once

#include "base/Value.h"
#include "engine/dialect/Catalog.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace velmora::engine::dialect {

// The kind that a PARAMETERS clause means by a word; none for a word it does not know.
std::optional<SqlType> TypeOfName(QStringView word);

// The word by which a PARAMETERS clause declares the kind.
QString WordOfType(SqlType type);

SqlType TypeOfValue(const Value& value);

// For error messages: "a date", "a text".
QString Describe(SqlType type);

inline bool IsNumber(SqlType type) {
    return type == SqlType::Integer || type == SqlType::Real;
}

// The kind of a result that is sometimes of one and sometimes of the other kind: kinds that do not mix become text.
SqlType CommonType(SqlType first, SqlType second);

// Whether values of the kinds compare with = and <. Unknown compares with everything, a yes/no with a number.
bool Comparable(SqlType first, SqlType second);

} // namespace velmora::engine::dialect
