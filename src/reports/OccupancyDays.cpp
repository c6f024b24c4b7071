#include "reports/OccupancyDays.h"

namespace velmora {

using namespace Qt::StringLiterals;

ReportDays OccupancyDays(const DaySelection& selection, Date today, const LocaleText& locale) {
    if (selection.choice == DayChoice::OtherDay) {
        return DailyReportDays(selection, today, locale);
    }
    Date day = today;
    if (selection.choice == DayChoice::NextWorkingDay) {
        // A daily report covers all days up to the next working one.
        day = DailyReportDays(selection, today, locale).end - std::chrono::days(1);
    }
    return {day, day + std::chrono::days(1), u" for "_s + locale.ShortDate(day)};
}

std::unique_ptr<engine::Recordset> OpenOverDays(engine::Database& database, QStringView query, Date start, Date end,
                                                std::initializer_list<const char*> fields) {
    const auto definition = database.OpenQueryDef(query);
    definition->SetParameter(u"RStart", StartOfDay(start));
    definition->SetParameter(u"REnd", StartOfDay(end));
    auto rows = definition->OpenRecordset(engine::RecordsetKind::Snapshot);
    if (!rows->EndOfFile()) {
        for (const char* field : fields) {
            static_cast<void>((*rows)[field]);
        }
    }
    return rows;
}

} // namespace velmora
