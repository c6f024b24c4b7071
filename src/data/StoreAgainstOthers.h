#pragma once

#include "engine/Recordset.h"

#include <functional>

namespace velmora {

// Stores a change of a record that other desks may write at the same time. `find` gives the set on its record, as the
// database holds it now, or null where nothing is to be stored any more; `assign` sets the fields. Both are called
// again when another desk changed or deleted the record between being found and being written, five times at most;
// then that EngineError is thrown. Every other one is thrown at once. False when `find` gave null.
bool StoreAgainstOthers(const std::function<engine::Recordset*()>& find,
                        const std::function<void(engine::Recordset&)>& assign);

} // namespace velmora
