#pragma once

#include "reports/ReportFrame.h"
#include "reports/ReportTable.h"

namespace velmora {

// The table's row for the current record; none for a record that the report leaves out. May read other records.
using RowOf = std::function<std::optional<ReportTable::Row>(const engine::Recordset& records)>;

// Reads the records into the table, from the current one to the last, inside a report's frame. False when the user
// cancelled. A record whose row fails is reported through `steps` and, ignored, left out.
bool ReadTable(ReportContext& context, Steps& steps, ReportFrame& frame, engine::Recordset& records, const RowOf& rowOf,
               ReportTable& table);

} // namespace velmora
