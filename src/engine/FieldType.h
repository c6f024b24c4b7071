#pragma once

#include "base/Value.h"

#include <QString>

namespace velmora::engine {

// What a column, parameter or expression holds. Unknown: decided by the value itself.
enum class FieldType : unsigned char { Unknown, YesNo, Integer, Real, Text, DateTime };

FieldType TypeOfValue(const Value& value);

inline bool IsNumber(FieldType type) {
    return type == FieldType::Integer || type == FieldType::Real;
}

// The word by which a PARAMETERS clause declares the type.
QString WordOfType(FieldType type);

// For error messages: "a date", "a text"; the two kinds of number are one.
QString Describe(FieldType type);

// For messages about a value that a field or parameter of the type takes: "a whole number", "a date-time".
QString DescribeValues(FieldType type);

} // namespace velmora::engine
