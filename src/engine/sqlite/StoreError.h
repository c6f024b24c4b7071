#pragma once

#include "engine/EngineError.h"

#include <QString>

struct sqlite3;

namespace velmora::engine::sqlite {

// Throws the EngineError that stands for `code` (a result code of the store, extended or not), with a sentence for the
// user, `sql` as the text at fault (in the caller's dialect, empty when there was none), and the store's own words
// where they say more. `connection` is where those words are read from; null when there is no connection.
// Throws std::bad_alloc when the store ran out of memory.
[[noreturn]] void ThrowStoreError(sqlite3* connection, int code, const QString& sql);

// True for the codes by which the store says that the file is not a sound database.
bool IsDamage(int code);
// True for the codes that mean another user's lock was in the way for longer than the store waited.
bool IsLocked(int code);

} // namespace velmora::engine::sqlite
