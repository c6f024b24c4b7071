#include "reports/DailyReport.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupancyReport.h"
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
    EXPECT_EQ(budget.start, MakeDateTime({2026, 3, 6, 9, 0, 0}));
    EXPECT_EQ(budget.name.toString(), u"Budget <Q1> & more"_s);
    EXPECT_EQ(budget.person->storage.toString(), u"Cage 4"_s);
    EXPECT_EQ(budget.guestLocation->name.toString(), u"Guest Phone 1"_s);
    ASSERT_EQ(budget.notes.size(), 3U);
    EXPECT_EQ(budget.notes[0].category.toString(), u"Setup"_s);
    EXPECT_TRUE(budget.notes[1].text.isEmpty());
    EXPECT_TRUE(find(4).movedIn == false && find(4).phoneConnected && find(3).movedOut);
    EXPECT_FALSE(find(3).person->found);
    EXPECT_FALSE(find(5).guestLocation->found);
    EXPECT_FALSE(find(2).guestLocation.has_value());
    // What is not asked for is not read.
    const DailyLine brief = GatherDaily({.brief = true}, friday, Gather()).rows.front();
    EXPECT_FALSE(brief.person || brief.guestLocation);
}

TEST_F(GatherTest, ACancelLeavesTheRowsUntilThenAndSaysOfHowMany) {
    const DailyRows whole = GatherDaily(everything, friday, Gather());
    int records = 0;
    const DailyRows part = GatherDaily(everything, friday, Gather([&](double) { return ++records < 3; }));
    EXPECT_TRUE(part.cancelled && !whole.cancelled);
    EXPECT_EQ(part.recordsRead, 2);
    EXPECT_EQ(part.recordCount, whole.recordsRead);
    EXPECT_LE(part.rows.size(), 2U);
}

TEST_F(GatherTest, NobodyWaitsForAReportBetweenItsRecords) {
    const auto other = engine::Database::Open(database_->Path(), {.busyMilliseconds = 0});
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
    faulty_->failures = {{u"Select * from [Note] where Reservation = 1"_s, 2}};
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
    const ReportDays thursday_{*MakeDate(2026, 3, 5), *MakeDate(2026, 3, 6), {}};
};

TEST_F(GatherTablesTest, RowsHaveLocationsAndPersonsForKeys) {
    const OccupancyRows occupants = GatherOccupants({.includeUnreserved = true}, thursday_, Gather());
    const OccupancyRows directory = GatherDirectory({.includeUnreserved = true}, thursday_, Gather());
    const auto count = [](const OccupancyRows& rows, auto&& condition) {
        return std::count_if(rows.rows.begin(), rows.rows.end(), condition);
    };
    const auto isAbel = [](const OccupancyRow& row) { return row.lastName == QUtf8StringView("Abel"); };
    EXPECT_GT(count(occupants, isAbel), 0);
    EXPECT_GT(count(directory, isAbel), 0);
    EXPECT_GT(count(occupants, [](const OccupancyRow& row) { return !row.occupied; }), 0);
    const OccupancyRows outside = GatherExceptions({.date = thursday_.start}, thursday_, Gather());
    ASSERT_FALSE(outside.rows.empty());
    for (const OccupancyRow& row : outside.rows) {
        EXPECT_GT(row.asset, 0);
        EXPECT_FALSE(row.location.isEmpty() && row.lastName.isEmpty());
    }
}

} // namespace
} // namespace velmora
