#pragma once

#include "app/db/Output.h"
#include "engine/Recordset.h"

#include <vector>

namespace velmora::db {

// The field names as the header line shows them: "Table.Field" where two fields have one name.
QStringList HeaderNames(const std::vector<engine::FieldDescription>& fields);

// Prints the header line and every record from the current one on.
void PrintRows(engine::Recordset& rows, Output& output);

} // namespace velmora::db
