#include "reports/ReportDays.h"

#include "base/Error.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

TEST(ReportDaysTest, TheDayRuleOfEachWeekday) {
    const LocaleText locale(QLocale::c());
    DaySelection selection{.otherDate = MakeDate(2026, 3, 10)};
    struct Case {
        DayChoice choice;
        int today;
        int start;
        int end;
        const char* phrase;
        // Of the occupants and the directory.
        bool ofOccupancy = false;
    };
    // March 1, 2026, is a Sunday.
    for (const Case& c : {
             Case{DayChoice::NextWorkingDay, 1, 2, 3, " for 3/2/2026"},
             Case{DayChoice::NextWorkingDay, 2, 3, 4, " for 3/3/2026"},
             Case{DayChoice::NextWorkingDay, 3, 4, 5, " for 3/4/2026"},
             Case{DayChoice::NextWorkingDay, 4, 5, 6, " for 3/5/2026"},
             Case{DayChoice::NextWorkingDay, 5, 6, 7, " for 3/6/2026"},
             Case{DayChoice::NextWorkingDay, 6, 7, 10, " for 3/7/2026 to 3/9/2026"},
             Case{DayChoice::NextWorkingDay, 7, 8, 10, " for 3/8/2026 to 3/9/2026"},
             Case{DayChoice::CurrentDay, 6, 6, 7, " for 3/6/2026"},
             Case{DayChoice::CurrentDay, 7, 7, 8, " for 3/7/2026"},
             Case{DayChoice::OtherDay, 6, 10, 11, " for 3/10/2026 Through 3/10/2026"},
             Case{DayChoice::NextWorkingDay, 1, 2, 3, " for 3/2/2026", true},
             Case{DayChoice::NextWorkingDay, 5, 6, 7, " for 3/6/2026", true},
             Case{DayChoice::NextWorkingDay, 6, 9, 10, " for 3/9/2026", true},
             Case{DayChoice::NextWorkingDay, 7, 9, 10, " for 3/9/2026", true},
             Case{DayChoice::CurrentDay, 7, 7, 8, " for 3/7/2026", true},
         }) {
        selection.choice = c.choice;
        const ReportDays days =
            (c.ofOccupancy ? OccupancyDays : DailyReportDays)(selection, *MakeDate(2026, 3, c.today), locale);
        EXPECT_EQ(days.start, MakeDate(2026, 3, c.start)) << c.today;
        EXPECT_EQ(days.end, MakeDate(2026, 3, c.end)) << c.today;
        EXPECT_EQ(days.phrase.toStdString(), c.phrase) << c.today;
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
