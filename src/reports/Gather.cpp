#include "reports/Gather.h"

namespace velmora {

std::unique_ptr<engine::Recordset> OpenOverDays(engine::Database& database, QStringView query,
                                                const std::optional<ReportDays>& days,
                                                const std::function<void(const engine::Recordset&)>& readFields) {
    const auto definition = database.OpenQueryDef(query);
    if (days) {
        definition->SetParameter(u"RStart", StartOfDay(days->start));
        definition->SetParameter(u"REnd", StartOfDay(days->end));
    }
    auto records = definition->OpenRecordset(engine::RecordsetKind::Snapshot);
    if (!records->EndOfFile()) {
        readFields(*records);
    }
    return records;
}

} // namespace velmora
