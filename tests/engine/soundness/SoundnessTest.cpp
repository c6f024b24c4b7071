#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Statement.h"
#include "tests/engine/Child.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

constexpr int damaged = static_cast<int>(EngineErrorNumber::Damaged);

} // namespace

TEST(CheckPath, TellsWhatIsNoDatabaseFile) {
    const SampleFolder folder;
    ASSERT_TRUE(QDir().mkdir(folder.File(u"Folder"_s)));
    ASSERT_EQ(::mkfifo(folder.File(u"Pipe"_s).toUtf8().constData(), 0600), 0);
    SetContents(folder.File(u"Empty"_s), {});
    EXPECT_EQ(OpeningResult(folder.File(u"Missing"_s)), NumberOf(EngineErrorNumber::FileNotFound));
    EXPECT_EQ(OpeningResult(folder.File(u"NoFolder/Velmora.MDB"_s)), NumberOf(EngineErrorNumber::FileNotFound));
    EXPECT_EQ(OpeningResult(folder.File(u"Folder"_s)), NumberOf(EngineErrorNumber::CannotOpen));
    EXPECT_EQ(OpeningResult(folder.File(u"Pipe"_s)), NumberOf(EngineErrorNumber::CannotOpen));
    EXPECT_EQ(OpeningResult(folder.File(u"Empty"_s)), damaged);
    EXPECT_EQ(folder.Names(), QStringList({u"Empty"_s})) << "nothing is created";
}

TEST(CheckOpened, DemandsWhatTheProgramExpects) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 100);
    EXPECT_EQ(OpeningResult(folder.Path(), {}), 0);
    OpenOptions options;
    options.schema.version = 2;
    options.schema.tables = {{.name = u"ASSET"_s,
                              .columns = {{u"assetid"_s, ColumnType::Identity}},
                              .indexes = {{u"assetNAME"_s, {u"Name"_s}, true}}}};
    EXPECT_EQ(OpeningResult(folder.Path(), options), 0) << "letter case does not matter";
    const TableDefinition vehicle{.name = u"Vehicle"_s, .columns = {{u"ID"_s, ColumnType::Identity}}};
    for (const int since : {1, 2, 3}) {
        OpenOptions more = options;
        more.schema.tables.push_back(vehicle);
        more.schema.tables.back().since = since;
        EXPECT_EQ(OpeningResult(folder.Path(), more), since == 3 ? 0 : damaged) << "a table of a later version";
    }
    TableDefinition& asset = options.schema.tables.front();
    asset.columns.push_back({u"Colour"_s, ColumnType::Text});
    EXPECT_EQ(OpeningResult(folder.Path(), options), damaged);
    asset.columns.pop_back();
    asset.indexes.push_back({u"AssetColour"_s, {u"Colour"_s}});
    EXPECT_EQ(OpeningResult(folder.Path(), options), damaged);
    options.schema.version = 1;
    EXPECT_EQ(OpeningResult(folder.Path(), options), NumberOf(EngineErrorNumber::NewerVersion));
}

// Damage that the quick check cannot see is found once somebody has met it and left the mark.
TEST(DamageMark, MakesTheNextOpeningLookEverywhere) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 1500);
    sqlite::LeaveDamageMark(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    EXPECT_FALSE(sqlite::HasDamageMark(folder.Path())) << "a sound file loses its mark";

    const std::vector<int> leaves = PagesOf(folder.Path(), "Reservation", "leaf");
    OverwritePage(folder.Path(), leaves[leaves.size() / 2]);
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    sqlite::LeaveDamageMark(folder.Path());
    sqlite::LeaveDamageMark(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), damaged);
    EXPECT_EQ(OpeningResult(folder.Path()), damaged) << "and keeps it until it is repaired";
    RepairDatabase(folder.Path());
    EXPECT_FALSE(sqlite::HasDamageMark(folder.Path()));
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    sqlite::LeaveDamageMark(u"/nowhere/Velmora.MDB"_s);
}

// A check goes through the store's own file handle: the locks of this process stay in force.
TEST(CheckOpened, KeepsTheLocksOfThisProcess) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 100);
    sqlite::Connection writer(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
    writer.Execute("BEGIN IMMEDIATE; UPDATE Asset SET Jack = 'mine'");
    sqlite::Connection reader(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
    sqlite::CheckOpened(reader.Handle(), folder.Path(), ShippedOptions());
    EXPECT_TRUE(CheckDatabase(folder.Path()).isSound);
    const int child = Fork([&] {
        return ErrorOf([&] { Execute(folder.Path(), "UPDATE Asset SET Jack = 'theirs'"); }) ==
                       NumberOf(EngineErrorNumber::RecordLocked)
                   ? 0
                   : 1;
    });
    EXPECT_EQ(Wait(child), 0);
    writer.Execute("COMMIT");
}

TEST(CheckOpened, WaitsForNobodyLongerThanAsked) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 100);
    sqlite::Connection writer(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
    writer.Execute("BEGIN EXCLUSIVE");
    EXPECT_EQ(OpeningResult(folder.Path()), NumberOf(EngineErrorNumber::RecordLocked)) << "locked is not damaged";
}

} // namespace velmora::engine::test
