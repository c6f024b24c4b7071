#pragma once

#include "engine/records/CompiledQuery.h"
#include "engine/records/StoreConnection.h"

#include <QString>

#include <memory>
#include <vector>

namespace velmora::engine::records {

// A text as its caller gave it, with all that is needed to run it again.
struct QueryInput {
    QString text;
    std::shared_ptr<const CompiledQuery> query;
    std::vector<Value> literals;   // those of the text
    std::vector<Value> parameters; // by their position in the query
};

// Binds the places 1, 2, ... of a statement of the input's query.
void BindValues(StoreStatement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input);

} // namespace velmora::engine::records
