#include "reports/DailyReport.h"
#include "reports/ExceptionReport.h"
#include "tests/desk/DeskFixture.h"

namespace velmora {
namespace {

const DailyRequest everything{.includeNotes = true, .includePhone = true};
const ReportDays friday{*MakeDate(2026, 3, 6), *MakeDate(2026, 3, 7), {}};

class GatherTest : public DeskFixture {
protected:
    explicit GatherTest(const QString& rows = u"/desk/site.sql"_s) : DeskFixture({}, rows) {}
};

TEST_F(GatherTest, ALineHasItsKeysAndWhatBelongsToIt) {
    const DailyRows rows = GatherDaily(everything, friday, Gather());
    const auto find = [&](qint32 reservation) {
        const auto line = std::find_if(rows.rows.begin(), rows.rows.end(),
                                       [&](const DailyLine& each) { return each.reservation == reservation; });
        EXPECT_NE(line, rows.rows.end()) << reservation;
        return *line;
    };
    const DailyLine budget = find(1);
    EXPECT_EQ(budget.asset, 12);
    EXPECT_EQ(budget.person->storage.toString(), u"Cage 4"_s);
    EXPECT_EQ(budget.guestLocation->name.toString(), u"Guest Phone 1"_s);
    EXPECT_EQ(budget.notes.size(), 3U);
    EXPECT_TRUE(find(4).movedIn == false && find(4).phoneConnected && find(3).movedOut);
    EXPECT_FALSE(find(3).person->found);
    EXPECT_FALSE(find(5).guestLocation->found);
    EXPECT_FALSE(find(2).guestLocation.has_value());
    // What is not asked for is not read.
    const DailyLine brief = GatherDaily({.brief = true}, friday, Gather()).rows.front();
    EXPECT_FALSE(brief.person || brief.guestLocation);
}

TEST_F(GatherTest, NobodyWaitsForAReportBetweenItsRecords) {
    const auto other = engine::Database::Open(database_->Location(), {.busyMilliseconds = 0});
    int written = 0;
    GatherDaily(everything, friday, Gather([&](double) {
                    other->Execute(u"Update Person Set Storage = 'Cage 5' Where LastName = 'Abel'");
                    return ++written > 0;
                }));
    EXPECT_GT(written, 5);
}

TEST_F(GatherTest, WhatCannotBeReadCostsThatDetailAlone) {
    const DailyRows whole = GatherDaily(everything, friday, Gather());
    // Reading ahead fails first, silently.
    const QString notes = u"Select Reservation, NoteCategory, Name, [Note] from [Note] where Reservation In "_s;
    faulty_->failures = {{notes, 1}, {notes + u"(1)"_s, 1}};
    fakes_.errors.answers = {Answer::Ignore};
    const DailyRows rows = GatherDaily(everything, friday, Gather());
    EXPECT_EQ(fakes_.errors.reports.size(), 1U);
    ASSERT_EQ(rows.rows.size(), whole.rows.size());
    size_t lost = 0;
    for (size_t i = 0; i < rows.rows.size(); ++i) {
        EXPECT_TRUE(rows.rows[i].person.has_value()) << i;
        lost += whole.rows[i].notes.size() - rows.rows[i].notes.size();
    }
    EXPECT_EQ(lost, 3U);
}

class GatherTablesTest : public GatherTest {
protected:
    GatherTablesTest() : GatherTest(u"/reports/site.sql"_s) {}
};

TEST_F(GatherTablesTest, AnExceptionHasItsAssetForAKey) {
    const ReportDays thursday{*MakeDate(2026, 3, 5), *MakeDate(2026, 3, 6), {}};
    for (const ExceptionType type : {ExceptionType::SpaceType, ExceptionType::NotCheckedIn}) {
        const OccupancyRows rows = GatherExceptions({type, thursday.start}, thursday, Gather());
        EXPECT_FALSE(rows.rows.empty());
        for (const OccupancyRow& row : rows.rows) {
            EXPECT_GT(row.asset, 0);
        }
    }
}

} // namespace
} // namespace velmora
