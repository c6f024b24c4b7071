#include "engine/Schema.h"

#include <algorithm>
#include <iterator>

namespace velmora::engine {

std::vector<TableDefinition> Schema::TablesOf(int siteVersion) const {
    std::vector<TableDefinition> present;
    std::copy_if(tables.begin(), tables.end(), std::back_inserter(present),
                 [&](const TableDefinition& table) { return table.since <= siteVersion; });
    return present;
}

} // namespace velmora::engine
