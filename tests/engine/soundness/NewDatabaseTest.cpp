#include "engine/NewDatabase.h"
#include "engine/Repair.h"
#include "engine/sqlite/SchemaScript.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

int NumberOf(EngineErrorNumber number) {
    return static_cast<int>(number);
}

} // namespace

TEST(NewDatabase, StoresValuesOfEveryKind) {
    const SampleFolder folder;
    {
        NewDatabase database(folder.Path(), ShippedSchema());
        Loader rows = database.Load(u"Note"_s, {u"Name"_s, u"Note"_s, u"Cost"_s, u"Confirm"_s, u"CompletedTime"_s});
        rows.Add({u"K\u00e4se \U0001F600"_s, Value(), 2.5, true, *MakeDateTime({2026, 3, 7})});
        rows.Add({u""_s, u"x"_s.repeated(9000), 3, false, Value()});
        EXPECT_EQ(ErrorOf([&] { rows.Add({1, 2}); }), NumberOf(EngineErrorNumber::InvalidArgument));
        EXPECT_EQ(folder.Names().size(), 1);
        EXPECT_FALSE(folder.Names().contains(u"Velmora.MDB"_s)) << "not before it is finished";
        database.Finish();
        EXPECT_EQ(ErrorOf([&] { rows.Add({1, 2, 3, 4, 5}); }), NumberOf(EngineErrorNumber::InvalidArgument));
    }
    EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
    EXPECT_TRUE(CheckDatabase(folder.Path(), ShippedOptions()).isSound);
    const std::set<QByteArray> expected = {"1|~|K\u00e4se \U0001F600|~|~|2.5|1|0|2026-03-07 00:00:00|~|",
                                           "2|~||~|" + QByteArray(9000, 'x') + "|3.0|0|0|~|~|"};
    EXPECT_EQ(ReadRows(folder.Path()).at("Note"), expected);
}

TEST(NewDatabase, ReplacesNothing) {
    const SampleFolder folder;
    NewDatabase early(folder.Path(), ShippedSchema());
    NewDatabase late(folder.Path(), ShippedSchema());
    early.Load(u"Asset"_s, {u"AssetID"_s}).Add({7});
    early.Finish();
    const QByteArray made = Contents(folder.Path());
    EXPECT_EQ(ErrorOf([&] { late.Finish(); }), NumberOf(EngineErrorNumber::FileExists));
    EXPECT_EQ(ErrorOf([&] { NewDatabase(folder.Path(), ShippedSchema()); }), NumberOf(EngineErrorNumber::FileExists));
    EXPECT_EQ(Contents(folder.Path()), made);
}

TEST(NewDatabase, LeavesNothingBehindUnfinished) {
    const SampleFolder folder;
    {
        NewDatabase database(folder.Path(), ShippedSchema());
        Loader assets = database.Load(u"Asset"_s, {u"AssetID"_s, u"Name"_s});
        assets.Add({1, u"room"_s});
        EXPECT_EQ(ErrorOf([&] { assets.Add({1, u"other"_s}); }), NumberOf(EngineErrorNumber::DuplicateKey));
        assets.Add({2, u"ROOM"_s});
        EXPECT_EQ(ErrorOf([&] { database.Finish(); }), NumberOf(EngineErrorNumber::DuplicateKey)) << "by the index";
    }
    EXPECT_EQ(folder.Names(), QStringList());
    EXPECT_NE(ErrorOf([&] { NewDatabase(folder.Path(), u"CREATE TABLE Broken ("_s); }), 0);
    EXPECT_EQ(ErrorOf([&] { NewDatabase(u"/nowhere/Velmora.MDB"_s, {}); }), NumberOf(EngineErrorNumber::DiskError));
    EXPECT_EQ(folder.Names(), QStringList());
}

TEST(NewDatabase, LeavesNothingBehindOnAFullDisk) {
    const SampleFolder folder;
    const int child = Fork([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {400000, 400000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const int error = ErrorOf([&] { MakeSample(folder.Path(), 20000); });
        return error == NumberOf(EngineErrorNumber::DiskFull) || error == NumberOf(EngineErrorNumber::DiskError) ? 0
                                                                                                                 : 1;
    });
    EXPECT_EQ(Wait(child), 0);
    EXPECT_EQ(folder.Names(), QStringList());
}

TEST(SchemaScript, SortsStatementsAndKeepsTriggersWhole) {
    const sqlite::SchemaScript script(
        u"-- first; a comment\nCREATE TABLE T (A TEXT DEFAULT ';');/* x; */ create unique\n"
        "index I ON T (A); CREATE INDEX J ON T (A);\nCREATE TRIGGER R AFTER INSERT ON T "
        "BEGIN DELETE FROM T; SELECT 1; END; INSERT INTO T VALUES ('z') -- no semicolon"_s);
    ASSERT_EQ(script.beforeRows.size(), 3u);
    EXPECT_EQ(script.beforeRows[0], "CREATE TABLE T (A TEXT DEFAULT ';');");
    EXPECT_TRUE(script.beforeRows[1].endsWith("SELECT 1; END;"));
    EXPECT_TRUE(script.beforeRows[2].startsWith("INSERT"));
    EXPECT_EQ(script.uniqueIndexes, std::vector<QByteArray>{"create unique\nindex I ON T (A);"});
    EXPECT_EQ(script.otherIndexes, std::vector<QByteArray>{"CREATE INDEX J ON T (A);"});
}

} // namespace velmora::engine::test
