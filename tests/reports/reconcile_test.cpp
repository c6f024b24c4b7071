#include "demo/DemoSite.h"
#include "reports/ExceptionReport.h"
#include "reports/OccupancyReport.h"
#include "reports/UsageReport.h"
#include "site/Site.h"
#include "tests/data/RawStore.h"
#include "tests/desk/DeskFixture.h"

namespace velmora {
namespace {

// The large demo site on a Wednesday, and the same counted in the store's own SQL.
class ReconcileTest : public DeskFixture {
protected:
    ReconcileTest() {
        const Site site = demo::CreateDemoSite(large_.path(), {demo::Tier::Large, day_});
        store_.emplace(site.Location());
        faulty_.reset();
        database_ = site.Open();
        faulty_ = std::make_unique<FaultyDatabase>(*database_);
    }

    // A number counted by hand; "TODAY" stands for the reservations that overlap the day.
    qint64 Count(QByteArray sql) {
        sql.replace("TODAY", "\"End\" > '2026-03-04 00:00:00' AND Start < '2026-03-05 00:00:00'");
        return store_->Number(QString::fromUtf8(sql));
    }
    // Unreserved, permanent and non-permanent add up to all locations, once per area, or all persons.
    void ExpectUsage();
    void ExpectTables();

    const Date day_ = *MakeDate(2026, 3, 4);
    const ReportDays days_{day_, day_ + std::chrono::days(1), {}};
    QTemporaryDir large_;
    std::optional<test::RawStore> store_;
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
        const UsageRequest request{static_cast<UsageBreakdown>(breakdown), day_};
        std::map<std::optional<UsageClass>, qint64> counts;
        for (const UsageRow& row : GatherUsage(request, days_, Gather()).rows) {
            ++counts[row.usage];
        }
        const qint64 total =
            counts[UsageClass::Unreserved] + counts[UsageClass::Permanent] + counts[UsageClass::NonPermanent];
        EXPECT_EQ(total, Count(all)) << breakdown;
        EXPECT_EQ(counts[UsageClass::Unreserved], Count(all + " AND " + uses + ") = 0")) << breakdown;
        EXPECT_EQ(counts[UsageClass::Permanent], Count(all + " AND " + uses + " AND Permanent <> 0) > 0")) << breakdown;
        EXPECT_GT(counts[UsageClass::NonPermanent], 0) << breakdown;
    }
}

void ReconcileTest::ExpectTables() {
    const QByteArray places =
        "FROM Asset a JOIN Reservation r ON r.Asset = a.AssetID WHERE TODAY AND Location <> 0 AND "
        "a.Name NOT GLOB 'Unused*'";
    const QByteArray occupied = places + " AND coalesce(r.EventType, '') COLLATE BINARY <> 'UNAVAILABLE'";
    const auto size = [](const auto& gathered) { return std::ssize(gathered.rows); };
    EXPECT_EQ(size(GatherOccupants({}, days_, Gather())), Count("SELECT count(*) " + occupied));
    EXPECT_EQ(size(GatherExceptions({ExceptionType::NotCheckedIn, day_, true}, days_, Gather())),
              Count("SELECT count(*) " + places + " AND Permanent = 0 AND SLockStart = 0 AND Asset > 256"));
    EXPECT_EQ(size(GatherDirectory({}, days_, Gather())),
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
        EXPECT_EQ(size(GatherExceptions({type, day_}, days_, Gather())), byHand) << static_cast<int>(type);
        EXPECT_GT(byHand, 50) << static_cast<int>(type);
    }
}

TEST_F(ReconcileTest, FiguresAreThoseCountedByHand) {
    ExpectUsage();
    ExpectTables();
}

} // namespace
} // namespace velmora
