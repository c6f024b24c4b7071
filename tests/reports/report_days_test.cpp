#include "reports/ReportDays.h"

#include "base/Error.h"
#include "tests/support/Folders.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

TEST(ReportDaysTest, TheDayRuleOfEachWeekday) {
    const LocaleText locale(QLocale::c());
    DaySelection selection{.otherDate = MakeDate(2026, 3, 10)};
    const std::map<QString, DayChoice> choices = {{u"next"_s, DayChoice::NextWorkingDay},
                                                  {u"current"_s, DayChoice::CurrentDay},
                                                  {u"other"_s, DayChoice::OtherDay}};
    const auto march = [](const QString& day) { return *MakeDate(2026, 3, day.toInt()); };
    for (const QStringList& row : TestRows(u"reports/days.txt"_s)) {
        SCOPED_TRACE(row.join(u' ').toStdString());
        selection.choice = choices.at(row[1]);
        const auto rule = row[0] == u"daily" ? DailyReportDays : OccupancyDays;
        const ReportDays days = rule(selection, march(row[2]), locale);
        EXPECT_EQ(days.start, march(row[3]));
        EXPECT_EQ(days.end, march(row[4]));
        EXPECT_EQ(days.phrase, u' ' + row[5]);
    }
    selection = {DayChoice::OtherDay, MakeDate(2026, 3, 10), 30};
    const ReportDays month = DailyReportDays(selection, *MakeDate(2026, 3, 1), locale);
    EXPECT_EQ(month.end, MakeDate(2026, 4, 9));
    EXPECT_EQ(month.phrase, u" for 3/10/2026 Through 4/8/2026"_s);
    selection.otherDate.reset();
    EXPECT_THROW(DailyReportDays(selection, *MakeDate(2026, 3, 1), locale), Error);
}

} // namespace
} // namespace velmora
