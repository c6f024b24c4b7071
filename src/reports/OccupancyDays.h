#pragma once

#include "engine/Database.h"
#include "reports/ReportDays.h"

namespace velmora {

// The days that the occupant and the directory report cover. The next working day is that day alone, without the
// weekend before it. Throws Error for another day without a date.
ReportDays OccupancyDays(const DaySelection& selection, Date today, const LocaleText& locale);

// Opens the stored query of that name over the days. Throws Error where its rows lack one of the fields: a site may
// have a query of its own, and what is wrong with it is told once, not for each row.
std::unique_ptr<engine::Recordset> OpenOverDays(engine::Database& database, QStringView query, Date start, Date end,
                                                std::initializer_list<const char*> fields);

} // namespace velmora
