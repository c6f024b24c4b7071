#pragma once

#include "engine/dialect/SqlWriter.h"

namespace velmora::engine::sqlite {

// How the SQL of the embedded store is written.
const dialect::SqlWriter& Writer() noexcept;

} // namespace velmora::engine::sqlite
