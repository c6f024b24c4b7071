#include "site/Site.h"
#include "site/SiteSchema.h"
#include "tests/data/RawStore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace Qt::StringLiterals;

TEST(RepairSiteTest, AMissingColumnIsDamageAndLostQueriesComeBack) {
    const QTemporaryDir folder;
    const Site site = CreateSite(folder.path());
    {
        test::RawStore raw(site.Location());
        raw.Run(u"INSERT INTO Note (Reservation, Note) VALUES (7, 'kept');"
                u"UPDATE StoredQuery SET Text = 'SELECT 1 AS Ours FROM Note' WHERE Name = 'A1';"
                u"DELETE FROM StoredQuery WHERE Name IN ('P1', 'QReport3');"
                u"ALTER TABLE Note DROP COLUMN CompletedBy"_s);
    }
    try {
        site.Open();
        FAIL() << "opened a database without one of its columns";
    } catch (const engine::EngineError& error) {
        EXPECT_EQ(error.Number(), 3049);
        EXPECT_TRUE(error.Description().contains(u"Note.CompletedBy"_s)) << error.what();
    }
    const QString account = site.Repair(*MakeDateTime({2026, 3, 7, 14, 15, 9})).ToText();
    EXPECT_TRUE(account.contains(u"QReport3"_s) && account.contains(u"P1"_s)) << account.toStdString();
    const auto database = site.Open();
    EXPECT_EQ((*database->OpenRecordset(u"Select * from [Note] where Reservation = 7"))["Note"].ToText(), u"kept"_s);
    EXPECT_EQ((*database->OpenRecordset(u"A1"))["Ours"].ToInteger(), 1) << "a query that is there stays the site's own";
    EXPECT_EQ(database->QueryNames().size(), static_cast<qsizetype>(StoredQueryTexts().size()));
}

} // namespace
} // namespace velmora
