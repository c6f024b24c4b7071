#pragma once

#include "base/Value.h"
#include "engine/Recordset.h"

#include <QString>

#include <optional>

namespace velmora::db {

// Reads a parameter's value as the type that the query declares for it: date-times as YYYY-MM-DD or
// YYYY-MM-DD HH:MM:SS, yes/no as true or false, numbers with a point. None for a text that is no such value. Without a
// declared type (Unknown) it is a number, a date-time or true or false where it reads as one, else the text itself.
std::optional<Value> ReadParameter(const QString& text, engine::FieldType type);

// What the type is called in a message, with its form: "a whole number".
QString TypeInWords(engine::FieldType type);

} // namespace velmora::db
