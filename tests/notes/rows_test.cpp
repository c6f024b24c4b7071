// The rows behind the grids: reading, writing beside another desk, and what standard notes are found by.
#include "notes/NoteCategories.h"
#include "notes/NoteRules.h"
#include "notes/RowKeeper.h"
#include "notes/StandardNotes.h"
#include "tests/notes/NoteSite.h"

namespace velmora {
namespace {

using Outcome = BoundRows::Outcome;

class RowsTest : public testing::Test {
protected:
    RowsTest() { rows_.Open(NotesOf(7)); }
    int Column(const char* field) const { return rows_.ColumnOf(field); }
    void Set(int row, const char* field, const QString& text) { rows_.Set(row, Column(field), Value(text)); }
    QString At(int row, const char* field) { return rows_.At(row, Column(field)).ToText(); }

    fakes::TestProgram test_;
    NoteSite site_;
    BoundRows rows_{*site_.desk, NoteColumns(), {{"Reservation", Value(qint64{7})}}};
};

TEST_F(RowsTest, AnEditLivesApartFromTheDatabaseUntilItIsWritten) {
    EXPECT_EQ(rows_.Count(), 3);
    Set(1, "Name", u"Tea"_s);
    EXPECT_EQ(rows_.PendingRow(), 1);
    EXPECT_THROW(Set(0, "Name", u"x"_s), std::logic_error);
    // Back to what is stored: nothing is pending any more.
    Set(1, "Name", u"Coffee"_s);
    EXPECT_EQ(rows_.PendingRow(), std::nullopt);
    Set(3, "Name", u"Tent"_s);
    EXPECT_TRUE(rows_.IsAdding());
    EXPECT_EQ(At(3, "Reservation"), u"7"_s);
    rows_.Undo();
    EXPECT_EQ(At(3, "Name"), QString());
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
}

TEST_F(RowsTest, BothDesksTypingTheSameIsNoConflict) {
    EXPECT_EQ(At(0, "Name"), u"Chairs"_s);
    site_.other->Execute(u"Update [Note] Set Name = \"Stools\", Confirm = True Where Name = \"Chairs\"");
    Set(0, "Name", u"Stools"_s);
    EXPECT_EQ(rows_.Write(), Outcome::Done);
    EXPECT_EQ(At(0, "Confirm"), u"True"_s);
    // A row that was never shown is edited as it is now.
    site_.other->Execute(u"Update [Note] Set Name = \"Wire\" Where Name = \"Cable\"");
    rows_.Open(NotesOf(7));
    Set(2, "Name", u"Cord"_s);
    EXPECT_EQ(rows_.Write(), Outcome::Done);
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cord"_s);
}

TEST_F(RowsTest, AChangeInLetterCaseAloneIsAChange) {
    EXPECT_EQ(At(0, "Name"), u"Chairs"_s);
    site_.other->Execute(u"Update [Note] Set Name = \"CHAIRS\" Where Name = \"Chairs\"");
    Set(0, "Name", u"chairs"_s);
    ASSERT_EQ(rows_.Write(), Outcome::Changed);
    EXPECT_EQ(rows_.Conflicts().at(0).theirs, Value(u"CHAIRS"_s));
    // An edit that is taken back leaves what the other desk wrote.
    rows_.Undo();
    EXPECT_EQ(At(0, "Name"), u"CHAIRS"_s);
    Set(0, "Name", u"Stools"_s);
    site_.other->Execute(u"Update [Note] Set Name = \"chairs\" Where Name = \"Chairs\"");
    ASSERT_EQ(rows_.Write(), Outcome::Changed);
    rows_.KeepMine();
    EXPECT_EQ(rows_.Write(), Outcome::Done);
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
}

TEST_F(RowsTest, GoneRowsAreSeenAsSuch) {
    EXPECT_EQ(At(1, "Name"), u"Coffee"_s);
    site_.other->Execute(u"Delete from [Note] Where Name = \"Coffee\" or Name = \"Cable\"");
    Set(1, "Name", u"Tea"_s);
    EXPECT_EQ(rows_.Write(), Outcome::Gone);
    EXPECT_EQ(rows_.PendingRow(), 1);
    rows_.Undo();
    EXPECT_EQ(At(1, "Name"), u"Coffee"_s);
    EXPECT_TRUE(rows_.IsGone(1));
    EXPECT_EQ(rows_.Delete(2), Outcome::Done);
}

TEST_F(RowsTest, DeletionStopsAtTheFirstFailure) {
    CellText texts(test_.program.services().localeText);
    RowRules rules;
    RowKeeper keeper(test_.program, rows_, rules, u"Notes Form"_s);
    {
        const engine::Transaction lock(*site_.other);
        test_.dialogs.answers = {Answer::Yes};
        test_.errors.answers = {Answer::Ignore};
        EXPECT_TRUE(keeper.Delete({1, 0}));
    }
    ASSERT_EQ(test_.errors.reports.size(), 1U);
    EXPECT_EQ(test_.errors.reports[0].place.procedure, u"Keyboard Trap"_s);
    EXPECT_EQ(test_.errors.reports[0].place.task, u"Delete Rows"_s);
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
}

TEST_F(RowsTest, AStoredNoteWithoutACategoryCanStillBeTicked) {
    site_.other->Execute(u"Update [Note] Set NoteCategory = Null Where Name = \"Cable\"");
    rows_.Open(NotesOf(7));
    NoteRules rules(test_.clock, u"ann"_s);
    rows_.Set(2, Column("Confirm"), Value(true));
    EXPECT_FALSE(rules.Refuse(rows_).has_value());
    rows_.Undo();
    rows_.Set(0, Column("NoteCategory"), Value());
    EXPECT_EQ(rules.Refuse(rows_)->column, Column("NoteCategory"));
}

TEST(StandardNotes, AreFoundByModeAndKey) {
    const NoteSite site;
    EXPECT_EQ(FindStandardNoteList(u"1"_s, u"12"_s)->source,
              u"Select * from AssetStdNoteSelect where AssetID = 12 Order by NoteCategory, Name"_s);
    EXPECT_EQ(FindStandardNoteList(u"2"_s, u"5"_s)->source,
              u"Select * from EventStdNoteSelect where EventType = \"5\" Order by NoteCategory, Name"_s);
    EXPECT_FALSE(FindStandardNoteList(u"3"_s, u"5"_s).has_value());
    // A reservation that is gone, or has no asset, has no standard notes.
    EXPECT_EQ(StandardNoteKeyOf(*site.desk, 7, u"1"_s), u"12"_s);
    EXPECT_EQ(StandardNoteKeyOf(*site.desk, 7, u"2"_s), u"Party \"A\""_s);
    for (const qint32 reservation : {8, 9}) {
        EXPECT_EQ(StandardNoteKeyOf(*site.desk, reservation, u"1"_s), u"Null"_s);
        EXPECT_EQ(StandardNoteKeyOf(*site.desk, reservation, u"2"_s), QString());
    }
}

} // namespace
} // namespace velmora
