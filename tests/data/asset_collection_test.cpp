#include "data/Helpers.h"
#include "data/LookupLists.h"
#include "site/Site.h"
#include "tests/data/RawStore.h"
#include "tests/support/Fakes.h"

#include <QTemporaryDir>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

// A site of its own, which `other_` changes as another desk does.
class AssetsTest : public testing::Test {
protected:
    void Fill() { FillAssetCollection(*database_); }
    QStringList Names() const {
        QStringList names;
        for (const auto& asset : Assets()) {
            names += QString::number(asset->nAsset()) + u' ' + asset->strName();
        }
        return names;
    }
    QString LastMessage() const { return test_.dialogs.messages.empty() ? u""_s : test_.dialogs.messages.back().text; }

    QTemporaryDir folder_;
    fakes::TestProgram test_;
    const Site site_ = CreateSite(folder_.path());
    std::unique_ptr<engine::Database> database_ = site_.Open();
    test::RawStore other_{site_.Location()};
};

TEST_F(AssetsTest, PositionNHoldsAssetN) {
    Fill();
    EXPECT_EQ(Assets().Count(), 0);
    other_.Run(u"INSERT INTO Asset (AssetID, Name, Description, Location, LocationLvl, LocationX, LocationY) VALUES "
               "(1, ' Hall ', '  wide ', 1, -3, -4, 5), (2, '205', NULL, NULL, NULL, NULL, NULL), "
               "(5, 'A name that is too long', NULL, 2, -32768, 0, 0)"_s);
    Fill();
    EXPECT_EQ(Names(),
              QStringList({u"1 Hall"_s, u"2 205"_s, u"3 Missing 3"_s, u"4 Missing 4"_s, u"5 A name that is"_s}));
    const AssetInfo& hall = *Assets().At(1);
    EXPECT_EQ(hall.Description(), u"wide"_s);
    EXPECT_TRUE(hall.nLocation());
    EXPECT_EQ(hall.LocationLevel(), 3);
    EXPECT_EQ(hall.LocationX(), 4);
    EXPECT_EQ(hall.LocationY(), 5);
    EXPECT_FALSE(Assets().At(2)->nLocation());
    EXPECT_TRUE(Assets().At(5)->nLocation()) << "any number but 0 is a yes";
    EXPECT_EQ(Assets().At(4)->Description(), u"Missing Asset 4"_s);
    EXPECT_EQ(Assets().Find(u"<205>"_s), Assets().At(2));
    EXPECT_EQ(Assets().Find(u"MISSING 4"_s), Assets().At(4));
    EXPECT_EQ(Assets().Find(u"205"_s), nullptr);
    EXPECT_EQ(Assets().At(0), nullptr);
    EXPECT_EQ(Assets().At(6), nullptr);

    const auto held = Assets().At(1);
    other_.Run(u"DELETE FROM Asset WHERE AssetID > 1"_s);
    Fill();
    EXPECT_EQ(Names(), QStringList(u"1 Hall"_s));
    EXPECT_EQ(held->strName(), u"Hall"_s) << "whoever holds an asset keeps it";
}

TEST_F(AssetsTest, NamesThatGiveOneKeyAreToldApart) {
    other_.Run(u"INSERT INTO Asset (AssetID, Name) VALUES (1, '101'), (2, '101 '), (3, 'Ähre'), (4, 'ähre'), "
               "(5, 'ERROR 6'), (6, '101  '), (7, 'Missing 9'), (10, 'ERROR 10')"_s);
    test_.dialogs.answers.assign(4, Answer::Ok);
    Fill();
    EXPECT_EQ(Names(),
              QStringList({u"1 101"_s, u"2 ERROR 2"_s, u"3 Ähre"_s, u"4 ERROR 4"_s, u"5 ERROR 6"_s, u"6 ERROR 6 2"_s,
                           u"7 Missing 9"_s, u"8 Missing 8"_s, u"9 ERROR 9"_s, u"10 ERROR 10"_s}));
    EXPECT_EQ(test_.dialogs.messages[0].text, u"Duplicate Asset Name, Asset Temporarily renamed to ERROR 2"_s);
    EXPECT_EQ(Assets().Find(u"error 6 2"_s), Assets().At(6));
    EXPECT_EQ(other_.Rows(u"SELECT Name FROM Asset WHERE AssetID = 2"_s), QStringList(u"101 "_s));
}

TEST_F(AssetsTest, ANumberOutOfRangeIsReportedAndLeftOut) {
    other_.Run(u"INSERT INTO Asset (AssetID, Name) VALUES (1, 'A'), (2000000000, 'B')"_s);
    test_.errors.answers = {Answer::Ignore};
    Fill();
    EXPECT_EQ(Names(), QStringList(u"1 A"_s));
    ASSERT_EQ(test_.errors.reports.size(), 1U);
    EXPECT_TRUE(test_.errors.reports[0].error.Description().contains(u"2000000000"_s));
    EXPECT_EQ(test_.errors.reports[0].place.module, u"Internal Data"_s);
    EXPECT_EQ(test_.errors.reports[0].place.procedure, u"Fill Asset Collection"_s);
    EXPECT_EQ(test_.errors.reports[0].place.task, u"undefined"_s);
}

TEST_F(AssetsTest, LoadingShowsItsStepsInTheRangeGiven) {
    other_.Run(u"INSERT INTO Asset (AssetID, Name) VALUES (1, 'A')"_s);
    LoadLookupLists(*database_, 20, 60);
    ASSERT_EQ(test_.progress.shown.size(), 7U);
    EXPECT_EQ(test_.progress.shown[0], std::pair(u"Loading Persons"_s, std::optional(20.0)));
    EXPECT_EQ(test_.progress.shown[4].first, u"Loading Locations"_s);
    EXPECT_DOUBLE_EQ(*test_.progress.shown[4].second, 42);
    EXPECT_DOUBLE_EQ(*test_.progress.shown[6].second, 54);
    EXPECT_EQ(Assets().Count(), 1);
    EXPECT_EQ(test_.eventLoop.pointer, Pointer::Default);
}

TEST(AssetInfoTest, PictureOfAnAsset) {
    struct Case {
        qint16 number;
        bool location;
        QString description;
        int picture;
    };
    const Case cases[] = {{255, true, {}, 2},
                          {256, true, u"Guest Extension"_s, 1},
                          {300, false, u"2 Guest Extensions"_s, 4},
                          {300, false, u"guest extension"_s, 3},
                          {12, false, {}, 3}};
    for (const Case& c : cases) {
        AssetInfo asset;
        asset.SetnAsset(c.number);
        asset.SetnLocation(c.location);
        asset.SetDescription(c.description);
        EXPECT_EQ(asset.nListImage(), c.picture) << c.number << c.description.toStdString();
    }
    AssetInfo asset;
    asset.SetnLocation(true);
    asset.SetnLocation(Value());
    EXPECT_FALSE(asset.nLocation());
    asset.SetDescription(QString(255, u' ') + u"beyond"_s);
    EXPECT_EQ(asset.Description(), QString());
}

class AssetChangesTest : public AssetsTest {
protected:
    AssetChangesTest() {
        other_.Run(u"INSERT INTO Asset (AssetID, Name) VALUES (255, 'Small'), (256, 'Old \"name\"'), (257, 'Taken'), "
                   "(258, 'Third');"
                   "INSERT INTO Reservation (ID, Asset) VALUES (1, 256), (2, 257), (3, 256);"
                   "INSERT INTO \"Asset/Event\" VALUES (256, 'x'), (257, 'x');"
                   "INSERT INTO \"Asset/Area\" VALUES (256, 'x');"
                   "INSERT INTO \"Asset/Organization\" VALUES (256, 'x');"
                   "INSERT INTO \"Asset/Person\" VALUES (256, 'x', 'y');"
                   "INSERT INTO \"Asset/StandardNote\" VALUES (256, 'x'), (257, 'x')"_s);
        Fill();
        asset_ = Assets().At(256);
        before_ = Rows();
    }
    // Everything that hangs on assets.
    QStringList Rows() {
        QStringList rows = other_.Rows(u"SELECT AssetID, Name FROM Asset ORDER BY 1"_s);
        for (const char* table : {"Event", "Area", "Organization", "Person", "StandardNote"}) {
            rows += other_.Rows(u"SELECT '%1', AssetID FROM \"Asset/%1\" ORDER BY AssetID"_s.arg(QLatin1String(table)));
        }
        return rows += other_.Rows(u"SELECT 'Reservation', ID FROM Reservation ORDER BY ID"_s);
    }

    std::shared_ptr<AssetInfo> asset_;
    QStringList before_;
};

TEST_F(AssetChangesTest, RenameKeepsTheNameAsGivenAndTheKey) {
    EXPECT_TRUE(asset_->Rename(*database_, u"A \"new\" name that is long "_s));
    EXPECT_EQ(asset_->strName(), u"A \"new\" name that is long "_s);
    EXPECT_EQ(other_.Rows(u"SELECT Name FROM Asset WHERE AssetID = 256"_s), QStringList(asset_->strName()));
    EXPECT_EQ(Assets().Find(u"Old \"name\""_s), asset_);

    test_.dialogs.texts = {u"Asked"_s};
    EXPECT_TRUE(asset_->Rename(*database_));
    EXPECT_EQ(test_.dialogs.prompts[0],
              (std::array{u"Enter new location name"_s, u"Rename Asset"_s, u"A \"new\" name that is long "_s}));
    EXPECT_EQ(other_.Rows(u"SELECT Name FROM Asset WHERE AssetID = 256"_s), QStringList(u"Asked"_s));
}

TEST_F(AssetChangesTest, RenameRefuses) {
    test_.dialogs.texts = {std::nullopt, u""_s, u"  "_s, u"Old \"name\""_s};
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(asset_->Rename(*database_));
    }
    test_.dialogs.answers = {Answer::Ok, Answer::Ok};
    EXPECT_FALSE(asset_->Rename(*database_, u"TAKEN"_s));
    EXPECT_EQ(LastMessage(), u"TAKEN already exists. Each asset must have a unique name"_s);
    EXPECT_EQ(Rows(), before_);
    EXPECT_EQ(asset_->strName(), u"Old \"name\""_s);

    other_.Run(u"DELETE FROM Asset WHERE AssetID = 256"_s);
    EXPECT_FALSE(asset_->Rename(*database_, u"New"_s));
    EXPECT_EQ(LastMessage(), u"Record not found, possibly deleted by another user"_s);
}

TEST_F(AssetChangesTest, DeleteAsksAndTakesEverythingAlong) {
    test_.dialogs.answers = {Answer::Ok};
    EXPECT_FALSE(Assets().At(255)->Delete(*database_));
    EXPECT_EQ(
        LastMessage(),
        u"Deleting this asset may cause problems with Velmora (the asset number is less than 256).  Rename instead."_s);
    EXPECT_EQ(test_.dialogs.messages.back().icon, Icon::Exclamation);
    test_.dialogs.answers = {Answer::No};
    EXPECT_FALSE(asset_->Delete(*database_));
    EXPECT_EQ(LastMessage(), u"Delete Old \"name\""_s);
    EXPECT_EQ(test_.dialogs.messages.back().icon, Icon::Question);
    test_.dialogs.answers = {Answer::Yes, Answer::No};
    EXPECT_FALSE(asset_->Delete(*database_));
    EXPECT_EQ(LastMessage(), u"2 reservations exist for this asset in the database and will be deleted too.  Do you "
                             "wish to continue?"_s);
    EXPECT_EQ(Rows(), before_);

    test_.dialogs.answers = {Answer::Yes, Answer::Yes};
    EXPECT_TRUE(asset_->Delete(*database_));
    EXPECT_EQ(Rows(), QStringList({u"255|Small"_s, u"257|Taken"_s, u"258|Third"_s, u"Event|257"_s,
                                   u"StandardNote|257"_s, u"Reservation|2"_s}));
    EXPECT_EQ(Assets().At(256), asset_) << "until the next fill";

    test_.dialogs.answers = {Answer::Yes};
    EXPECT_TRUE(Assets().At(258)->Delete(*database_)) << "nothing hangs on it, so there is one question";
}

TEST_F(AssetChangesTest, WhatIsBookedDuringTheQuestionIsAskedForToo) {
    test_.dialogs.onMessage = [this](const Message& message) {
        if (message.text.startsWith(u"2 "_s)) {
            other_.Run(u"INSERT INTO Reservation (ID, Asset) VALUES (4, 256)"_s);
        }
    };
    test_.dialogs.answers = {Answer::Yes, Answer::Yes, Answer::No};
    EXPECT_FALSE(asset_->Delete(*database_));
    EXPECT_TRUE(LastMessage().startsWith(u"3 reservations"_s));
    EXPECT_EQ(Rows(), before_ << u"Reservation|4"_s);
}

TEST_F(AssetChangesTest, AFailedDeleteChangesNothing) {
    other_.Run(u"CREATE TRIGGER Keep BEFORE DELETE ON Asset BEGIN SELECT RAISE(ABORT, 'kept'); END"_s);
    test_.dialogs.answers = {Answer::Yes, Answer::Yes};
    EXPECT_THROW(asset_->Delete(*database_), engine::EngineError);
    EXPECT_EQ(Rows(), before_);
}

TEST(HelpersTest, DateTimeLiteral) {
    EXPECT_EQ(SqlDateTime(*MakeDateTime({2026, 3, 7, 0, 5, 9})), u"#03/07/2026 00:05:09#"_s);
    EXPECT_EQ(SqlDateTime(*MakeDateTime({105, 12, 31, 23, 59, 0})), u"#12/31/0105 23:59:00#"_s);
}

} // namespace
} // namespace velmora
