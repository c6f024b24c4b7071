#include "desk/DailyMode.h"

#include "base/Error.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

TEST(DailyModeTest, EveryCodeNamesAQueryAndATitle) {
    struct Case {
        qint16 code;
        DailyVariant variant;
        DayChoice day;
        const char* query;
        const char* title;
    };
    for (const Case& c : {
             Case{0, DailyVariant::Starts, DayChoice::NextWorkingDay, "QReport3", "Reservation Starts"},
             Case{1, DailyVariant::Ends, DayChoice::NextWorkingDay, "QReport4", "Reservation Ends"},
             Case{2, DailyVariant::Starts, DayChoice::CurrentDay, "QReport3", "Reservation Starts"},
             Case{3, DailyVariant::Ends, DayChoice::CurrentDay, "QReport4", "Reservation Ends"},
             Case{4, DailyVariant::Starts, DayChoice::OtherDay, "QReport3", "Reservation Starts"},
             Case{5, DailyVariant::Ends, DayChoice::OtherDay, "QReport4", "Reservation Ends"},
             Case{8, DailyVariant::Combined, DayChoice::NextWorkingDay, "QReport5", "Reservation Starts and Ends"},
             Case{10, DailyVariant::Combined, DayChoice::CurrentDay, "QReport5", "Reservation Starts and Ends"},
             Case{12, DailyVariant::Combined, DayChoice::OtherDay, "QReport5", "Reservation Starts and Ends"},
         }) {
        const DailyMode mode = DailyMode::Decode(c.code);
        EXPECT_EQ(mode.variant, c.variant) << c.code;
        EXPECT_EQ(mode.day, c.day) << c.code;
        EXPECT_EQ(mode.QueryName().toStdString(), c.query) << c.code;
        EXPECT_EQ(mode.Title().toStdString(), c.title) << c.code;
        EXPECT_EQ(mode.Code(), c.code);
    }
    for (const int unknown : {6, 7, 9, 11, 14, -1}) {
        EXPECT_THROW(DailyMode::Decode(static_cast<qint16>(unknown)), Error) << unknown;
    }
}

TEST(ReportDaysTest, TheDayRuleOfEachWeekday) {
    const LocaleText locale(QLocale::c());
    DeskState state;
    state.dtcOtherDate = MakeDate(2026, 3, 10);
    struct Case {
        DayChoice choice;
        int today;
        int start;
        int end;
        const char* phrase;
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
         }) {
        const ReportDays days = DailyReportDays(c.choice, *MakeDate(2026, 3, c.today), state, locale);
        EXPECT_EQ(days.start, MakeDate(2026, 3, c.start)) << c.today;
        EXPECT_EQ(days.end, MakeDate(2026, 3, c.end)) << c.today;
        EXPECT_EQ(days.phrase.toStdString(), c.phrase) << c.today;
    }
    state.Label12 = 30;
    const ReportDays month = DailyReportDays(DayChoice::OtherDay, *MakeDate(2026, 3, 1), state, locale);
    EXPECT_EQ(month.end, MakeDate(2026, 4, 9));
    EXPECT_EQ(month.phrase, u" for 3/10/2026 Through 4/8/2026"_s);
    state.dtcOtherDate.reset();
    EXPECT_THROW(DailyReportDays(DayChoice::OtherDay, *MakeDate(2026, 3, 1), state, locale), Error);
}

} // namespace
} // namespace velmora
