#pragma once

#include "engine/Database.h"
#include "layouts/file/LayoutFile.h"
#include "print/ReportWriter.h"

namespace velmora::layouts {

// Reads the records that the formula and the layout select, and writes them group by group. Returns how many there
// were. Throws Error for what the database refuses.
qint64 WriteRecords(const Layout& layout, const Formula& selection, engine::Database& database,
                    const LocaleText& locale, DateTime now, print::ReportWriter& writer);

// How the days that a formula names are written: one day as a long date, more as "3/9/2026 to 3/12/2026"; the last date
// is the day after the last one. Empty for a formula without dates.
QString PeriodText(const Formula& formula, const LocaleText& locale);

} // namespace velmora::layouts
