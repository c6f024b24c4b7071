#include "reports/ReadTable.h"

#include "reports/LookAhead.h"

namespace velmora {

bool ReadTable(ReportContext& context, Steps& steps, ReportFrame& frame, engine::Recordset& records, const RowOf& rowOf,
               ReportTable& table) {
    using Result = std::optional<ReportTable::Row>;
    LookAhead<Result> ahead(context.database, rowOf);
    while (!records.EndOfFile()) {
        if (!frame.BeforeRow(records)) {
            return false;
        }
        const Result* read = ahead.Next(records);
        Result row;
        if (read != nullptr) {
            row = *read;
        } else {
            steps.Step({}, [&] { row = rowOf(records); });
        }
        if (row) {
            table.Append(*row);
        }
        if (!steps.Step({}, [&] { records.MoveNext(); })) {
            break;
        }
    }
    return true;
}

} // namespace velmora
