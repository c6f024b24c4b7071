#include "site/Site.h"
#include "demo/CreateDemoSite.h"
#include "tests/reports/ReportsFixture.h"

namespace velmora {
namespace {

// What a usage report says, added up over its groups.
struct UsageSums {
    qint64 unreserved = 0;
    qint64 permanent = 0;
    qint64 nonPermanent = 0;
    qint64 total = 0;
    // Names of the detail.
    qint64 names = 0;
    int groups = 0;
};

// Reads the figures off the text; every group's own must add up.
UsageSums ReadSums(const QByteArray& text) {
    UsageSums sums;
    std::array<qint64, 3> group{};
    for (const QByteArray& line : text.split('\n')) {
        const QList<QByteArray> cells = line.trimmed().isEmpty() ? QList<QByteArray>() : line.chopped(1).split('\t');
        if (cells.size() == 5) {
            sums.names += std::count_if(cells.begin(), cells.end(), [](const QByteArray& c) { return !c.isEmpty(); });
        }
        if (cells.size() != 3) {
            continue;
        }
        const qint64 count = cells[2].toLongLong();
        if (cells[1].endsWith(" Unreserved")) {
            group[0] = count;
        } else if (cells[1].endsWith(" Non-Permanent")) {
            group[2] = count;
        } else if (cells[1].endsWith(" Permanent")) {
            group[1] = count;
        } else if (cells[1].endsWith(" Total")) {
            EXPECT_EQ(count, group[0] + group[1] + group[2]) << cells[1].toStdString();
            sums.unreserved += group[0];
            sums.permanent += group[1];
            sums.nonPermanent += group[2];
            sums.total += count;
            ++sums.groups;
        }
    }
    return sums;
}

// The large demo site on a Wednesday, and the same counted in the store's own SQL.
class ReconcileTest : public ReportsFixture {
protected:
    ReconcileTest() {
        const Site site = demo::CreateDemoSite(large_.path(), {demo::Tier::Large, day_});
        EXPECT_EQ(sqlite3_open(site.Location().toUtf8().constData(), &store_), SQLITE_OK);
        faulty_.reset();
        database_ = site.Open();
        faulty_ = std::make_unique<FaultyDatabase>(*database_);
        fakes_.clock.now = StartOfDay(day_) + std::chrono::hours(14);
    }
    ~ReconcileTest() override { sqlite3_close(store_); }

    // A number counted by hand; "TODAY" stands for the reservations that overlap the day.
    qint64 Count(QByteArray sql) {
        sql.replace("TODAY", "\"End\" > '2026-03-04 00:00:00' AND Start < '2026-03-05 00:00:00'");
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(store_, sql.constData(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(store_);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const qint64 count = sqlite3_column_int64(statement, 0);
        sqlite3_finalize(statement);
        return count;
    }
    // Rows of a table of five columns but for the header.
    qint64 TableRows(const ReportRequest& request) {
        qint64 rows = -1;
        for (const QByteArray& line : Print(request).split('\n')) {
            rows += line.count('\t') == 5 ? 1 : 0;
        }
        return rows;
    }

    // Unreserved, permanent and non-permanent add up to all locations, once per area, or all persons.
    void ExpectUsage();
    void ExpectTables();

    const Date day_ = *MakeDate(2026, 3, 4);
    QTemporaryDir large_;
    sqlite3* store_ = nullptr;
};

void ReconcileTest::ExpectUsage() {
    const QByteArray inUse = " AND TODAY AND coalesce(EventType, '') COLLATE BINARY NOT IN ('UNUSED', 'UNAVAILABLE')";
    const QByteArray ofAsset = "(SELECT count(*) FROM Reservation WHERE Asset = AssetID" + inUse;
    const QByteArray ofPerson =
        "(SELECT count(*) FROM Reservation r WHERE r.LastName = p.LastName AND r.FirstName = p.FirstName" +
        QByteArray(inUse).replace("EventType", "r.EventType");
    const QByteArray places = "FROM Asset LEFT JOIN \"Asset/Area\" USING (AssetID) "
                              "WHERE Location <> 0 AND coalesce(Name, '') NOT GLOB 'Unused*'";
    const QByteArray persons = "FROM Person p WHERE 1";
    for (qint16 breakdown = 0; breakdown < 4; ++breakdown) {
        const QByteArray all = "SELECT count(*) " + (breakdown == 0 ? places : persons);
        const QByteArray uses = breakdown == 0 ? ofAsset : ofPerson;
        UsageRequest request{static_cast<UsageBreakdown>(breakdown), day_, true};
        const UsageSums sums = ReadSums(Print(request));
        EXPECT_GT(sums.groups, 100) << breakdown;
        EXPECT_EQ(sums.total, Count(all)) << breakdown;
        EXPECT_EQ(sums.unreserved, Count(all + " AND " + uses + ") = 0")) << breakdown;
        EXPECT_EQ(sums.permanent, Count(all + " AND " + uses + " AND Permanent <> 0) > 0")) << breakdown;
        EXPECT_EQ(sums.names, sums.total) << breakdown;
        EXPECT_GT(sums.nonPermanent, 0) << breakdown;
        request.detail = false;
        EXPECT_EQ(ReadSums(Print(request)).total, sums.total) << breakdown;
    }
}

void ReconcileTest::ExpectTables() {
    const QByteArray places =
        "FROM Asset a JOIN Reservation r ON r.Asset = a.AssetID WHERE TODAY AND Location <> 0 AND "
        "a.Name NOT GLOB 'Unused*'";
    const QByteArray occupied = places + " AND coalesce(r.EventType, '') COLLATE BINARY <> 'UNAVAILABLE'";
    OccupancyRequest occupancies{.days = {.choice = DayChoice::CurrentDay}};
    EXPECT_EQ(TableRows(occupancies), Count("SELECT count(*) " + occupied));
    EXPECT_EQ(TableRows(ExceptionRequest{ExceptionType::NotCheckedIn, day_, true}),
              Count("SELECT count(*) " + places + " AND Permanent = 0 AND SLockStart = 0 AND Asset > 256"));
    occupancies.list = OccupancyList::Directory;
    EXPECT_EQ(TableRows(occupancies),
              Count("SELECT count(*) FROM Person p JOIN Reservation r USING (LastName, FirstName) JOIN Asset a ON "
                    "a.AssetID = r.Asset WHERE TODAY AND a.Name <> '' AND coalesce(r.EventType, '') COLLATE BINARY <> "
                    "'UNAVAILABLE'"));
    for (const auto& [type, outside] :
         {std::pair<ExceptionType, QByteArray>{
              ExceptionType::SpaceType, "\"Asset/Event\" x WHERE x.AssetID = r.Asset AND x.EventType = p.EventType"},
          {ExceptionType::FirstArea, "\"Asset/Area\" x WHERE x.AssetID = r.Asset AND x.AreaName = p.Area"},
          {ExceptionType::SecondArea, "\"Asset/Area\" x WHERE x.AssetID = r.Asset AND x.AreaName = p.Area2"},
          {ExceptionType::ThirdArea, "\"Asset/Area\" x WHERE x.AssetID = r.Asset AND x.AreaName = p.Area3"}}) {
        const qint64 byHand = Count(
            "SELECT count(*) FROM Person p JOIN Reservation r ON r.ID = (SELECT min(f.ID) FROM Reservation f WHERE "
            "f.LastName = p.LastName AND f.FirstName = p.FirstName AND TODAY) JOIN Asset a ON a.AssetID = r.Asset "
            "WHERE "
            "NOT EXISTS (SELECT 1 FROM " +
            outside + ")");
        EXPECT_EQ(TableRows(ExceptionRequest{type, day_}), byHand) << static_cast<int>(type);
        EXPECT_GT(byHand, 50) << static_cast<int>(type);
    }
}

TEST_F(ReconcileTest, FiguresAreThoseCountedByHand) {
    ExpectUsage();
    ExpectTables();
}

} // namespace
} // namespace velmora
