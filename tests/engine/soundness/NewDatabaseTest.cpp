#include "engine/sqlite/NewDatabaseFile.h"
#include "tests/engine/Child.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

TEST(NewDatabase, StoresValuesOfEveryKind) {
    const SampleFolder folder;
    {
        sqlite::NewDatabaseFile database(folder.Path(), ShippedOptions().schema);
        const auto rows = database.Load(u"Note"_s, {u"Name"_s, u"Note"_s, u"Cost"_s, u"Confirm"_s, u"CompletedTime"_s});
        rows->Add({u"K\u00e4se \U0001F600"_s, Value(), 2.5, true, *MakeDateTime({2026, 3, 7})});
        rows->Add({u""_s, u"x"_s.repeated(9000), 3, false, Value()});
        EXPECT_EQ(ErrorOf([&] { rows->Add({1, 2}); }), NumberOf(EngineErrorNumber::InvalidArgument));
        EXPECT_EQ(folder.Names().size(), 1);
        EXPECT_FALSE(folder.Names().contains(u"Velmora.MDB"_s)) << "not before it is finished";
        database.Finish();
        EXPECT_EQ(ErrorOf([&] { rows->Add({1, 2, 3, 4, 5}); }), NumberOf(EngineErrorNumber::InvalidArgument));
    }
    EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
    EXPECT_TRUE(CheckDatabase(folder.Path(), ShippedOptions()).isSound);
    const std::set<QByteArray> expected = {"1|~|K\u00e4se \U0001F600|~|~|2.5|1|0|2026-03-07 00:00:00|~|",
                                           "2|~||~|" + QByteArray(9000, 'x') + "|3.0|0|0|~|~|"};
    EXPECT_EQ(ReadRows(folder.Path()).at("Note"), expected);
}

TEST(NewDatabase, ReplacesNothing) {
    const SampleFolder folder;
    sqlite::NewDatabaseFile early(folder.Path(), ShippedOptions().schema);
    sqlite::NewDatabaseFile late(folder.Path(), ShippedOptions().schema);
    early.Load(u"Asset"_s, {u"AssetID"_s})->Add({7});
    early.Finish();
    const QByteArray made = Contents(folder.Path());
    EXPECT_EQ(ErrorOf([&] { late.Finish(); }), NumberOf(EngineErrorNumber::FileExists));
    EXPECT_EQ(ErrorOf([&] { sqlite::NewDatabaseFile(folder.Path(), ShippedOptions().schema); }),
              NumberOf(EngineErrorNumber::FileExists));
    EXPECT_EQ(Contents(folder.Path()), made);
}

TEST(NewDatabase, LeavesNothingBehindUnfinished) {
    const SampleFolder folder;
    {
        sqlite::NewDatabaseFile database(folder.Path(), ShippedOptions().schema);
        const auto assets = database.Load(u"Asset"_s, {u"AssetID"_s, u"Name"_s});
        assets->Add({1, u"room"_s});
        EXPECT_EQ(ErrorOf([&] { assets->Add({1, u"other"_s}); }), NumberOf(EngineErrorNumber::DuplicateKey));
        assets->Add({2, u"ROOM"_s});
        EXPECT_EQ(ErrorOf([&] { database.Finish(); }), NumberOf(EngineErrorNumber::DuplicateKey)) << "by the index";
    }
    EXPECT_EQ(folder.Names(), QStringList());
    EXPECT_EQ(ErrorOf([&] { sqlite::NewDatabaseFile(u"/nowhere/Velmora.MDB"_s, {}); }),
              NumberOf(EngineErrorNumber::DiskError));
    EXPECT_EQ(folder.Names(), QStringList());
}

TEST(NewDatabase, LeavesNothingBehindOnAFullDisk) {
    const SampleFolder folder;
    EXPECT_TRUE(ReportsAFullDisk(400'000, [&] { MakeSample(folder.Path(), 20000); }));
    EXPECT_EQ(folder.Names(), QStringList());
}

} // namespace velmora::engine::test
