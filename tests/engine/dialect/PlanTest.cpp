#include "engine/dialect/Compiler.h"
#include "tests/engine/dialect/TestStore.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

// Indexes serve the texts that the program sends, whatever the emitted text had to add to them.
class PlanTest : public testing::Test {
protected:
    void ExpectPlan(const char* text, std::initializer_list<const char*> parts) {
        const CompiledStatement compiled = Compile(QString::fromLatin1(text), store_, Purpose::Update);
        const QString plan = store_.Plan(compiled.sql);
        for (const char* part : parts) {
            const QString words = QString::fromLatin1(part);
            const bool without = words.startsWith(u'!');
            EXPECT_NE(plan.contains(without ? words.mid(1) : words), without)
                << text << "\n"
                << compiled.sql.toStdString() << "\n"
                << plan.toStdString() << "\nexpected: " << part;
        }
    }

    TestStore store_;
};

constexpr const char* noSort = "!TEMP B-TREE";

TEST_F(PlanTest, KeysAndNames) {
    ExpectPlan("Select * from Asset order by AssetID", {"SCAN Asset", noSort});
    ExpectPlan("Select * from Asset where Name = \"x\"", {"SEARCH Asset USING INDEX AssetName (Name=?)", noSort});
    ExpectPlan("Select * from Asset where AssetID = 5", {"USING INTEGER PRIMARY KEY"});
    ExpectPlan("Select * from Asset order by Name", {"USING INDEX AssetName", noSort});
    ExpectPlan("Select * from Person", {noSort});
    ExpectPlan("Select * from Person where LastName = \"a\" and FirstName = \"b\"",
               {"USING INDEX sqlite_autoindex_Person_1 (LastName=? AND FirstName=?)", noSort});
    ExpectPlan("Select * from Person order by EventType", {"USING INDEX PersonEventType"});
    ExpectPlan("Select * from [Asset/Area] where AssetID = 1 and AreaName = \"x\"", {"(AssetID=? AND AreaName=?)"});
    ExpectPlan("Select * from [Note] where Reservation = 1", {"USING INDEX NoteReservation (Reservation=?)", noSort});
    ExpectPlan("Delete from [Asset/Event] where AssetID = 1", {"(AssetID=?)"});
    ExpectPlan("Select * from Reservation where Asset = 1", {"USING INDEX ReservationAsset (Asset=?)", noSort});
    ExpectPlan("Select * from Reservation where EventType = \"Guest Extension\" and Link = 7",
               {"USING INDEX ReservationLink (EventType=? AND Link=?)", noSort});
    ExpectPlan(
        "Select * from Reservation Where LastName = \"a\" and FirstName = \"b\" and End > #03/01/2026# and Start < "
        "#03/31/2026#",
        {"USING INDEX ReservationPerson (LastName=? AND FirstName=?)", noSort});
    ExpectPlan("Select * from Reservation where LastName In (\"a\", 'b')",
               {"USING INDEX ReservationPerson (LastName=?)"});
}

TEST_F(PlanTest, RangesOfDates) {
    ExpectPlan("SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where Start > "
               "#03/01/2026# and Start < #03/02/2026# And Asset.Name Like \"A*\" And SLockStart = False And "
               "Asset.AssetID >= 256",
               {"SEARCH Reservation USING INDEX ReservationStart (Start>? AND Start<?)",
                "SEARCH Asset USING INTEGER PRIMARY KEY"});
    ExpectPlan("SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where End > "
               "#03/01/2026# and End < #03/02/2026# And TLockEnd = False",
               {"SEARCH Reservation USING INDEX ReservationEnd (End>? AND End<?)"});
    ExpectPlan("SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where End > "
               "#03/01/2026# and LastName = \"a\" and FirstName = \"b\" and Asset.AssetID = 5 order by End",
               {"SEARCH Reservation USING INDEX"});
    ExpectPlan("SELECT ID FROM Reservation WHERE Start >= #03/01/2026# And Start < #03/02/2026#",
               {"USING COVERING INDEX ReservationStart (Start>? AND Start<?)"});
    // The order by the key is no reason to read the whole table.
    ExpectPlan("SELECT ID FROM Reservation WHERE Start Between RStart And REnd",
               {"INDEX ReservationStart (Start>? AND Start<?)"});
    ExpectPlan("SELECT * FROM Reservation WHERE Start > Date()", {"USING INDEX ReservationStart (Start>?)"});
    ExpectPlan("SELECT * FROM Reservation WHERE Now() + 1 < End And Not Permanent",
               {"USING INDEX ReservationEnd (End>?)"});
    ExpectPlan("SELECT * FROM Reservation WHERE Attendees > 5", {noSort});
    ExpectPlan("SELECT * FROM Reservation WHERE ID > 5", {"USING INTEGER PRIMARY KEY", noSort});
}

TEST_F(PlanTest, TextsThatBeginAlike) {
    ExpectPlan("SELECT * FROM Asset WHERE Name Like \"Conf*\"", {"USING INDEX AssetName (Name>? AND Name<?)"});
    ExpectPlan("SELECT * FROM Person WHERE LastName Like \"B?o*\"", {"(LastName>? AND LastName<?)"});
    ExpectPlan("SELECT * FROM Asset WHERE Name Like \"*ence\"", {"!AssetName"});
    ExpectPlan("SELECT * FROM Asset WHERE Name Not Like \"Conf*\"", {"!AssetName"});
}

TEST_F(PlanTest, StoredQueriesMergeIntoTheTextAroundThem) {
    store_.AddQuery(
        QStringLiteral("Offered"),
        QStringLiteral("SELECT [Asset/StandardNote].AssetID, StandardNotes.* FROM [Asset/StandardNote] INNER "
                       "JOIN StandardNotes ON [Asset/StandardNote].StandardNote = StandardNotes.Name"));
    store_.AddQuery(QStringLiteral("Starts"),
                    QStringLiteral("SELECT Asset.*, Reservation.ID, Start FROM Asset INNER JOIN Reservation ON "
                                   "Asset.AssetID = Reservation.Asset"));
    ExpectPlan("Select * from Offered where AssetID = 1 Order by NoteCategory, Name",
               {"sqlite_autoindex_Asset/StandardNote_1 (AssetID=?)", "(Name=?)", "!SUBQUERY", "!CO-ROUTINE"});
    ExpectPlan("Select * from Starts where Start > #03/01/2026#",
               {"USING INDEX ReservationStart (Start>?)", "!SUBQUERY", "!CO-ROUTINE"});
}

} // namespace
} // namespace velmora::engine::dialect
