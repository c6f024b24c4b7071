#include "engine/sqlite/Statement.h"
#include "tests/engine/soundness/Damages.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

// Saved rows are rows of the original, and the report counts what is there and what is not.
void ExpectTrueReport(const RepairReport& report, const Rows& before, const Rows& after,
                      const std::vector<const char*>& losers) {
    for (const TableRepair& table : report.tables) {
        const QByteArray name = table.table.toUtf8();
        const std::set<QByteArray> original = before.contains(name) ? before.at(name) : std::set<QByteArray>();
        const std::set<QByteArray>& saved = after.at(name);
        const auto missing = static_cast<qint64>(original.size()) - static_cast<qint64>(saved.size());
        EXPECT_TRUE(std::includes(original.begin(), original.end(), saved.begin(), saved.end())) << name.toStdString();
        EXPECT_EQ(table.rowsSaved, static_cast<qint64>(saved.size())) << name.toStdString();
        EXPECT_TRUE(table.mayHaveLostMore ? table.rowsLost <= missing : table.rowsLost == missing)
            << report.ToText().toStdString();
        const bool mayLose = std::find(losers.begin(), losers.end(), name) != losers.end();
        EXPECT_TRUE(missing == 0 || mayLose) << name.toStdString() << " lost " << missing << " rows\n"
                                             << report.ToText().toStdString();
    }
}

class RepairOf : public testing::TestWithParam<Damage> {
protected:
    // Made once for all tests.
    static const QByteArray& Sample() {
        static const QByteArray sample = [] {
            const SampleFolder folder;
            MakeSample(folder.Path(), 1500);
            return Contents(folder.Path());
        }();
        return sample;
    }
};

} // namespace

TEST_P(RepairOf, SavesWhatCanBeRead) {
    const Damage& damage = GetParam();
    const SampleFolder folder;
    SetContents(folder.Path(), Sample());
    for (const char* sql : damage.before) {
        Execute(folder.Path(), sql);
    }
    const Rows before = ReadRows(folder.Path());
    damage.apply(folder.Path());
    const QByteArray broken = Contents(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), damage.opening);
    EXPECT_EQ(CheckDatabase(folder.Path(), ShippedOptions()).isSound, damage.check == 0);
    EXPECT_EQ(Contents(folder.Path()), broken) << "opening and checking change nothing";
    if (damage.repair != 0) {
        EXPECT_EQ(ErrorOf([&] { RepairDatabase(folder.Path()); }), damage.repair);
        EXPECT_EQ(Contents(folder.Path()), broken);
        EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
        return;
    }
    const RepairReport report = RepairDatabase(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    EXPECT_TRUE(CheckDatabase(folder.Path(), ShippedOptions()).isSound);
    ExpectTrueReport(report, before, ReadRows(folder.Path()), damage.losers);
    EXPECT_EQ(folder.Names(), QStringList({u"Velmora.MDB"_s, u"Velmora.MDB.damaged-20260307-141509"_s}));
    EXPECT_EQ(Contents(report.keptAs), broken);
}

TEST(Repair, SaysWhichRowsAreLost) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 300);
    const std::vector<int> leaves = PagesOf(folder.Path(), "Reservation", "leaf");
    const std::set<QByteArray> before = ReadRows(folder.Path()).at("Reservation");
    OverwritePage(folder.Path(), leaves[3]);
    const RepairReport report = RepairDatabase(folder.Path());
    std::set<QByteArray> lost;
    const std::set<QByteArray> after = ReadRows(folder.Path()).at("Reservation");
    std::set_difference(before.begin(), before.end(), after.begin(), after.end(), std::inserter(lost, lost.end()));
    std::set<int> numbers;
    for (const QByteArray& row : lost) {
        numbers.insert(row.left(row.indexOf('|')).toInt());
    }
    ASSERT_GT(numbers.size(), 10u);
    const QString expected = u"Reservation: %1 rows saved, %2 lost. Lost: ID %3 to %4.\n"_s.arg(after.size())
                                 .arg(numbers.size())
                                 .arg(*numbers.begin())
                                 .arg(*numbers.rbegin());
    EXPECT_TRUE(report.ToText().contains(expected)) << report.ToText().toStdString();
    EXPECT_FALSE(report.LostNothing());
}

TEST(Repair, KeepsWhatASiteAdded) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 300);
    Execute(
        folder.Path(),
        "CREATE TABLE Parking (Place TEXT PRIMARY KEY, Level INTEGER DEFAULT 3) WITHOUT ROWID;"
        "INSERT INTO Parking (Place) VALUES ('b'), ('a'); CREATE TABLE Log (Entry TEXT); INSERT INTO Log VALUES ('x');"
        "CREATE UNIQUE INDEX LogEntry ON Log (Entry); ALTER TABLE Person ADD COLUMN Badge TEXT DEFAULT 'none';"
        "UPDATE Person SET Badge = 'b17' WHERE LastName = 'Last17'; CREATE VIEW Rooms AS SELECT Name FROM Asset;"
        "CREATE TRIGGER Keep AFTER DELETE ON Log BEGIN SELECT 1; END; DELETE FROM WorkOrder WHERE ID > 30;"
        "PRAGMA user_version = 12");
    const Rows before = ReadRows(folder.Path());
    OverwritePage(folder.Path(), PagesOf(folder.Path(), "ReservationStart", "leaf").back());
    EXPECT_TRUE(RepairDatabase(folder.Path()).LostNothing());
    EXPECT_EQ(ReadRows(folder.Path()), before) << "also the last number of a work order";
    const sqlite::Connection store(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
    EXPECT_NO_THROW(sqlite::Statement(store.Handle(), "SELECT Badge COLLATE NOCASE FROM Person").Step());
    sqlite::Statement kept(store.Handle(),
                           "SELECT count(*) FROM sqlite_schema WHERE name IN ('LogEntry', 'Rooms', 'Keep')");
    ASSERT_TRUE(kept.Step());
    EXPECT_EQ(kept.Integer(0), 3);
    sqlite::Statement version(store.Handle(), "PRAGMA user_version");
    ASSERT_TRUE(version.Step());
    EXPECT_EQ(version.Integer(0), 12);
}

INSTANTIATE_TEST_SUITE_P(Repair, RepairOf, testing::ValuesIn(Damages()),
                         [](const auto& test) { return std::string(test.param.name); });
} // namespace velmora::engine::test
