#pragma once

#include "base/DateTime.h"

#include <functional>

struct sqlite3;

namespace velmora::engine::sqlite {

// What Date() and Now() read.
using NowSource = std::function<DateTime()>;

// Gives a connection the functions that compiled statements call: those of the dialect and the conversions between its
// kinds of values. Call it once per connection; `now` is kept until the connection closes. A function that is given a
// value of the wrong kind fails with SQLITE_MISMATCH, one out of its range with SQLITE_ERROR, each with a sentence for
// the user. Throws EngineError when the store refuses.
void RegisterFunctions(sqlite3* connection, NowSource now);

} // namespace velmora::engine::sqlite
