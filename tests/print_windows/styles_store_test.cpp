// The print styles as the database keeps them, with two copies of the program at work.
#include "print/PrintStyles.h"
#include "tests/engine/TestSite.h"

namespace velmora::print {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(DatabaseStyles, KeepsOrderAndNeverOverwritesAnotherUsersRows) {
    const engine::test::TestSite site;
    site.Run("INSERT INTO PrintAttributes VALUES ('Phone', 8), ('Jack', 17), (NULL, NULL), ('Phone', 1)");
    const auto database = site.Open();
    const auto other = site.Open();
    DatabaseStyles mine(*database);
    DatabaseStyles theirs(*other);
    const StyleRows base = {{u"Phone"_s, 8}, {u"Jack"_s, 17}, {u""_s, 0}, {u"Phone"_s, 1}};
    EXPECT_EQ(mine.Read(), base);
    const StyleRows first = {{u"Q\"1\" 'x'"_s, 3}, {u"Phone"_s, 8}, {u"Jack"_s, 17}};
    EXPECT_EQ(theirs.Replace(base, first), std::nullopt);
    EXPECT_EQ(mine.Replace(base, {}), first) << "what is there now";
    EXPECT_EQ(theirs.Read(), first) << "and still is";
    EXPECT_EQ(mine.Replace(first, {}), std::nullopt);
    EXPECT_EQ(theirs.Read(), StyleRows());
}

TEST(DatabaseStyles, AFailureChangesNothing) {
    const engine::test::TestSite site;
    site.Run("INSERT INTO PrintAttributes VALUES ('Phone', 8);"
             "CREATE TRIGGER full BEFORE INSERT ON PrintAttributes WHEN NEW.Caption = 'Bad' "
             "BEGIN SELECT RAISE(ABORT, 'no'); END");
    const auto database = site.Open();
    DatabaseStyles styles(*database);
    const StyleRows base = styles.Read();
    EXPECT_THROW(styles.Replace(base, {{u"Good"_s, 1}, {u"Bad"_s, 1}}), Error);
    EXPECT_EQ(styles.Read(), base);
}

} // namespace
} // namespace velmora::print
