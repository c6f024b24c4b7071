// The grid under the fingers: cursor, editing in place, refusals, undo, selection, deletion, two desks.
#include "tests/notes_windows/NotesFixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace velmora {
namespace {

enum { Key, Reservation, Name, Category, Note, Cost, Confirm, Completed, Time, By };

class NotesGridTest : public testing::Test {
protected:
    NotesGridTest() {
        job_.SetOutputTarget(3);
        Open(7);
    }
    void Open(qint32 reservation) {
        window_ = std::make_unique<frmNotes>(context_, reservation, u"ann"_s);
        // As ShowModal, without the loop that waits for its end.
        Opener::Activate(*window_);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        hand_.emplace(*window_);
        hand_->view.setFocus();
    }
    struct Opener : frmNotes {
        static void Activate(frmNotes& window) { (window.*&Opener::Form_Activate)(); }
    };
    const std::vector<Message>& Told() const { return test_.dialogs.messages; }
    void Plan(std::initializer_list<Answer> answers) { test_.dialogs.answers = answers; }
    QString Stored(const QString& fields) const {
        return site_.Shown(u"Select "_s + fields + u" from [Note] where Reservation = 7"_s);
    }

    fakes::TestProgram test_;
    NoteSite site_;
    KeptText delivery_;
    print::PrintJob job_{
        {test_.program.services(), delivery_, [this] { return print::ReadPrintAttributes(*site_.desk); }}};
    const NotesContext context_{test_.program, *site_.desk, job_};
    std::unique_ptr<frmNotes> window_;
    std::optional<GridHand> hand_;
};

TEST_F(NotesGridTest, TypedCellsAreWrittenWhenTheRowIsLeft) {
    GridHand& hand = *hand_;
    EXPECT_EQ(hand.RowCount(), 4);
    EXPECT_EQ(hand.Row(), 0);
    EXPECT_EQ(hand.Column(), Name);
    hand.Type(u"Stools"_s);
    EXPECT_TRUE(hand.IsEditing());
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Column(), Category);
    EXPECT_FALSE(hand.IsEditing());
    EXPECT_EQ(hand.Text(0, Name), u"Stools"_s);
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
    hand.Type(u"cat"_s);
    hand.Key(Qt::Key_Return);
    EXPECT_EQ(hand.Row(), 1);
    EXPECT_EQ(Stored(u"Name, NoteCategory"_s), u"Stools|Catering / Coffee|Catering / Cable|Setup"_s);
}

TEST_F(NotesGridTest, TheEmptyRowBecomesANoteOfTheReservation) {
    Open(8);
    GridHand& hand = *hand_;
    EXPECT_EQ(hand.RowCount(), 1);
    EXPECT_EQ(hand.Text(0, Reservation), u"8"_s);
    hand.Type(u"Tent"_s);
    hand.Key(Qt::Key_Tab);
    hand.Type(u"setup"_s);
    hand.Key(Qt::Key_Tab);
    hand.Type(u"white"_s);
    hand.Key(Qt::Key_Return, Qt::ShiftModifier);
    hand.Type(u"large"_s);
    hand.Key(Qt::Key_Tab);
    hand.Type(u"1,234.5"_s);
    hand.Key(Qt::Key_Return);
    EXPECT_EQ(hand.RowCount(), 2);
    EXPECT_EQ(hand.Row(), 1);
    EXPECT_EQ(hand.Text(0, Cost), u"$1,234.50"_s);
    EXPECT_FALSE(hand.Text(0, Key).isEmpty());
    EXPECT_EQ(site_.Shown(u"Select Name, NoteCategory, [Note], Cost, Confirm from [Note] where Reservation = 8"_s),
              u"Tent|Setup|white\nlarge|1234.5|False"_s);
}

TEST_F(NotesGridTest, ANoteWithoutACategoryStaysUntilItHasOne) {
    GridHand& hand = *hand_;
    hand.Click(3, Name);
    hand.Type(u"Tent"_s);
    Plan({Answer::Ok, Answer::Ok, Answer::Ok});
    hand.Key(Qt::Key_Up);
    EXPECT_TRUE(Told().at(0).text.contains(u"category"));
    EXPECT_EQ(hand.Row(), 3);
    EXPECT_EQ(hand.Column(), Category);
    // Neither are other rows deleted nor does the window close over it.
    QTest::mouseClick(&hand.grid, Qt::LeftButton, {}, QPoint(200, 6));
    hand.Key(Qt::Key_Delete);
    EXPECT_TRUE(Told().at(1).text.contains(u"category"));
    Child<QPushButton>(*window_, u"cmdClose"_s).click();
    EXPECT_TRUE(window_->isVisible());
    hand.Type(u"Setup"_s);
    Child<QPushButton>(*window_, u"cmdClose"_s).click();
    EXPECT_FALSE(window_->isVisible());
    EXPECT_TRUE(site_.Names().endsWith(u"Tent"));
}

TEST_F(NotesGridTest, RefusedEntriesStayOpenAndSayWhy) {
    struct Case {
        int column;
        QString typed;
        QString told;
    };
    GridHand& hand = *hand_;
    for (const Case& c : {Case{Category, u"nope"_s, u"\"nope\" is not in the list"_s},
                          Case{Cost, u"cheap"_s, u"\"cheap\" is not an amount of money"_s},
                          Case{Cost, u"1.005"_s, u"\"1.005\" has more than two decimals"_s}}) {
        hand.Click(0, c.column);
        hand.Type(c.typed);
        Plan({Answer::Ok, Answer::Ok});
        hand.Click(1, Name);
        EXPECT_TRUE(Told().back().text.startsWith(c.told)) << Told().back().text.toStdString();
        EXPECT_EQ(hand.Row(), 0);
        hand.Key(Qt::Key_Tab);
        ASSERT_TRUE(hand.IsEditing());
        EXPECT_EQ(test_.dialogs.answers.size(), 0U);
        hand.Key(Qt::Key_Escape);
        EXPECT_FALSE(hand.IsEditing());
    }
    // The date box tells in place; no message interrupts.
    hand.Click(0, Time);
    hand.Type(u"2/30/2026"_s);
    hand.Key(Qt::Key_Return);
    EXPECT_TRUE(hand.IsEditing());
    EXPECT_EQ(hand.Row(), 0);
    hand.Key(Qt::Key_Escape);
    hand.Type(u"3/1/26"_s);
    hand.Key(Qt::Key_Return);
    EXPECT_EQ(Stored(u"Top 1 CompletedTime, Cost, NoteCategory"_s), u"2026-03-01 00:00:00|5|Setup"_s);
}

TEST_F(NotesGridTest, AnEditorGoesOnAtTheEndOfTheTextAndTypingOverReplacesIt) {
    GridHand& hand = *hand_;
    hand.Click(0, Note);
    hand.Key(Qt::Key_F2);
    hand.Type(u"!"_s);
    // Its frame is told from the grid in every shade.
    auto* sheet = qobject_cast<QPlainTextEdit*>(hand.Editor());
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->grab().toImage().pixelColor(sheet->width() / 2, 0),
              hand.view.palette().color(QPalette::Highlight));
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Note), u"ten!"_s);
    // A second click opens it as well; a short entry is then typed over.
    hand.Click(0, Note);
    hand.Click(0, Note);
    hand.Type(u"?"_s);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Note), u"ten!?"_s);
    hand.Click(0, Name);
    hand.Click(0, Name);
    hand.Type(u"Stools"_s);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Name), u"Stools"_s);
    // Backspace empties the cell; a letter put together by the input method begins an entry.
    hand.Click(0, Note);
    hand.Key(Qt::Key_Backspace);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Note), QString());
    hand.Click(0, Name);
    EXPECT_TRUE(hand.view.testAttribute(Qt::WA_InputMethodEnabled));
    QInputMethodEvent letter;
    letter.setCommitString(u"\u00e9"_s);
    QApplication::sendEvent(&hand.view, &letter);
    hand.Type(u"tage"_s);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Text(0, Name), u"\u00e9tage"_s);
}

TEST_F(NotesGridTest, LongCategoriesNeitherWidenTheEditorNorTheMessage) {
    const QString longName = u"responsible for everything "_s.repeated(20).trimmed();
    site_.other->Execute(u"Insert into NoteCategory (Name) Values (\"%1\")"_s.arg(longName));
    for (int i = 0; i < 40; ++i) {
        site_.other->Execute(u"Insert into NoteCategory (Name) Values (\"Category %1\")"_s.arg(i));
    }
    Open(7);
    GridHand& hand = *hand_;
    hand.Click(0, Category);
    hand.Key(Qt::Key_F4);
    auto* box = qobject_cast<QComboBox*>(hand.Editor());
    ASSERT_NE(box, nullptr);
    EXPECT_LE(box->width(), hand.view.columnWidth(Category) + 20);
    EXPECT_LT(box->view()->window()->width(), 700);
    box->hidePopup();
    box->lineEdit()->setText(u"nope"_s);
    Plan({Answer::Ok});
    hand.Key(Qt::Key_Tab);
    EXPECT_TRUE(Told().back().text.contains(u"Category 0, Category 1, ")) << Told().back().text.toStdString();
    EXPECT_LT(Told().back().text.size(), 400);
}

TEST_F(NotesGridTest, ACategoryTakenAwayMeanwhileIsNotStored) {
    GridHand& hand = *hand_;
    hand.Click(0, Category);
    hand.Type(u"Unused"_s);
    site_.other->Execute(u"Delete from NoteCategory Where Name = \"Unused\"");
    Plan({Answer::Ok});
    hand.Key(Qt::Key_Return);
    ASSERT_FALSE(Told().empty());
    EXPECT_TRUE(Told().back().text.startsWith(u"The category \"Unused\" is no longer defined"));
    EXPECT_EQ(hand.Row(), 0);
    EXPECT_EQ(hand.Column(), Category);
    // It is not offered any more.
    hand.Key(Qt::Key_F2);
    EXPECT_EQ(qobject_cast<QComboBox*>(hand.Editor())->findText(u"Unused"_s), -1);
    hand.Key(Qt::Key_Escape);
    hand.Type(u"Catering"_s);
    hand.Key(Qt::Key_Return);
    EXPECT_EQ(Stored(u"Top 1 NoteCategory"_s), u"Catering"_s);
    // What was chosen before its category went is left alone.
    site_.other->Execute(u"Delete from NoteCategory Where Name = \"Setup\"");
    hand.Click(2, Note);
    hand.Type(u"long"_s);
    hand.Click(0, Name);
    EXPECT_EQ(Stored(u"NoteCategory, [Note]"_s), u"Catering|ten / Catering|hot / Setup|long"_s);
}

TEST_F(NotesGridTest, ATextIsShownInFullAsItStands) {
    site_.other->Execute(u"Update [Note] Set [Note] = \"<b>5 < 6</b>\" Where Name = \"Chairs\"");
    Open(7);
    const QString tip = hand_->At(0, Note).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(u"&lt;b&gt;5 &lt; 6&lt;/b&gt;")) << tip.toStdString();
    EXPECT_TRUE(tip.contains(u"pre-wrap"));
    EXPECT_EQ(hand_->At(2, Note).data(Qt::ToolTipRole).toString(), QString());
}

TEST_F(NotesGridTest, AnEntryChosenFromTheListIsTakenAtOnce) {
    GridHand& hand = *hand_;
    hand.Click(0, Category);
    hand.Key(Qt::Key_Down, Qt::AltModifier);
    auto* list = qobject_cast<QComboBox*>(hand.Editor());
    ASSERT_TRUE(list != nullptr && list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_FALSE(hand.IsEditing());
    EXPECT_EQ(hand.Text(0, Category), u"Unused"_s);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_EQ(hand.view.Rows().PendingRow(), 0);
}

TEST_F(NotesGridTest, EscapeTakesBackTheCellThenTheRowThenCloses) {
    GridHand& hand = *hand_;
    hand.Type(u"Stools"_s);
    hand.Key(Qt::Key_Tab);
    hand.Type(u"Cat"_s);
    hand.Key(Qt::Key_Escape);
    EXPECT_EQ(hand.Text(0, Name), u"Stools"_s);
    EXPECT_EQ(hand.Text(0, Category), u"Setup"_s);
    hand.Key(Qt::Key_Escape);
    EXPECT_EQ(hand.Text(0, Name), u"Chairs"_s);
    EXPECT_TRUE(window_->isVisible());
    hand.Key(Qt::Key_Escape);
    EXPECT_FALSE(window_->isVisible());
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
}

TEST_F(NotesGridTest, TickingCompletedTellsWhenAndByWhom) {
    site_.other->Execute(u"Update [Note] Set CompletedBy = \"bob\" Where Name = \"Coffee\"");
    Open(7);
    GridHand& hand = *hand_;
    hand.Tick(0, Completed);
    EXPECT_EQ(hand.Text(0, Completed), u"True"_s);
    EXPECT_EQ(hand.Text(0, Time), u"3/7/2026 2:15 PM"_s);
    hand.Click(1, Confirm);
    hand.Key(Qt::Key_Space);
    hand.Key(Qt::Key_Right);
    hand.Key(Qt::Key_Space);
    // Escape clears what the tick had filled in too; the next two ticks stay.
    hand.Key(Qt::Key_Escape);
    EXPECT_EQ(hand.Text(1, By), u"bob"_s);
    hand.Key(Qt::Key_Space);
    hand.Key(Qt::Key_Down);
    EXPECT_EQ(Stored(u"Confirm, Completed, CompletedTime, CompletedBy"_s),
              u"False|True|2026-03-07 14:15:00|ann / False|True|2026-03-07 14:15:00|bob / False|False||"_s);
    // A box that is ticked and cleared again leaves the empty row empty.
    hand.Click(3, Confirm);
    hand.Key(Qt::Key_Space);
    hand.Key(Qt::Key_Space);
    EXPECT_FALSE(hand.view.HasPendingEdit());
    // A day that is typed keeps the time of day; clearing the tick keeps what was filled in.
    hand.Click(0, Time);
    hand.Type(u"3/5/2026"_s);
    hand.Key(Qt::Key_Tab);
    hand.Tick(0, Completed);
    hand.Click(1, Name);
    EXPECT_EQ(Stored(u"Top 1 Completed, CompletedTime"_s), u"False|2026-03-05 14:15:00"_s);
}

TEST_F(NotesGridTest, PastedLinesStayTogetherInANoteAndBecomeOneLineElsewhere) {
    GridHand& hand = *hand_;
    QApplication::clipboard()->setText(u"one\ntwo\nthree"_s);
    hand.Click(0, Note);
    hand.Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(qobject_cast<QPlainTextEdit*>(hand.Editor())->toPlainText(), u"one\ntwo\nthree"_s);
    hand.Key(Qt::Key_Return);
    hand.Click(0, Name);
    hand.Key(Qt::Key_V, Qt::ControlModifier);
    hand.Key(Qt::Key_Return);
    // The same into an editor that is open.
    hand.Click(1, Name);
    hand.Key(Qt::Key_F2);
    hand.Key(Qt::Key_A, Qt::ControlModifier);
    hand.Key(Qt::Key_V, Qt::ControlModifier);
    hand.Key(Qt::Key_Return);
    EXPECT_EQ(Stored(u"Name, [Note]"_s), u"one two three|one\ntwo\nthree / one two three|hot / Cable|"_s);
    hand.Select(0);
    hand.Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"one two three\tSetup\t\"one\ntwo\nthree\"\t$5.00\tFalse"));
}

TEST_F(NotesGridTest, RowsAreSelectedInOrderAndDeletedAfterTheQuestion) {
    GridHand& hand = *hand_;
    hand.Key(Qt::Key_Delete);
    EXPECT_TRUE(Told().empty());
    hand.Select(2);
    hand.Select(0, Qt::ControlModifier);
    EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{2, 0}));
    hand.Select(1, Qt::ShiftModifier);
    EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{0, 1}));
    hand.Select(3, Qt::ControlModifier);
    EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{0, 1}));

    Plan({Answer::No});
    hand.Key(Qt::Key_Delete);
    EXPECT_EQ(Told().back().text, u"Delete 2 Rows?"_s);
    EXPECT_EQ(Told().back().title, QString());
    EXPECT_EQ(Told().back().icon, Icon::Question);
    EXPECT_EQ(hand.view.SelectedRows().size(), 2U);
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
    Plan({Answer::Yes});
    hand.Key(Qt::Key_Delete);
    EXPECT_EQ(site_.Names(), u"Cable"_s);
    EXPECT_EQ(hand.RowCount(), 2);
    EXPECT_TRUE(hand.view.SelectedRows().empty());
    EXPECT_EQ(site_.Shown(u"Select Name from [Note] where Reservation = 9"_s), u"Elsewhere"_s);
}

TEST_F(NotesGridTest, KeysAndTheCaptionMoveAndSelect) {
    GridHand& hand = *hand_;
    hand.Type(u"Stools"_s);
    hand.Key(Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(hand.Row(), 2);
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
    hand.Key(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(hand.Row(), 0);
    // Without a modifier it is the grid's own paging, which knows of the empty row.
    hand.Key(Qt::Key_PageDown);
    EXPECT_EQ(hand.Row(), 3);
    QTest::mouseClick(&hand.grid, Qt::LeftButton, {}, QPoint(200, 6));
    EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{0, 1, 2}));
    hand.Click(1, Name);
    EXPECT_TRUE(hand.view.SelectedRows().empty());
    hand.Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{1}));
    // Tab passes the columns that cannot be edited, and goes on in the next row.
    hand.Click(1, By);
    hand.Key(Qt::Key_Tab);
    EXPECT_EQ(hand.Row(), 2);
    EXPECT_EQ(hand.Column(), Name);
    // With Ctrl it leaves the grid.
    hand.Key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_FALSE(hand.grid.isAncestorOf(QApplication::focusWidget()));
}

TEST_F(NotesGridTest, BothDesksChangesOfARowAreKeptAndConflictsAreAsked) {
    GridHand& hand = *hand_;
    const auto otherSets = [&](const QString& change) {
        site_.other->Execute(u"Update [Note] Set %1 Where Name = \"Chairs\""_s.arg(change));
    };
    otherSets(u"[Note] = \"twelve\""_s);
    hand.Click(0, Cost);
    hand.Type(u"7"_s);
    hand.Click(1, Cost);
    EXPECT_TRUE(Told().empty());
    EXPECT_EQ(Stored(u"Top 1 [Note], Cost"_s), u"twelve|7"_s);
    EXPECT_EQ(hand.Text(0, Note), u"twelve"_s);

    otherSets(u"Cost = 9"_s);
    hand.Click(0, Cost);
    hand.Type(u"8"_s);
    Plan({Answer::Cancel, Answer::Yes});
    hand.Click(1, Cost);
    EXPECT_EQ(hand.Row(), 0);
    const QString told = Told().back().text;
    EXPECT_TRUE(told.contains(u"before: $7.00") && told.contains(u"yours: $8.00") &&
                told.contains(u"the other desk's: $9.00"))
        << told.toStdString();
    EXPECT_EQ(Stored(u"Top 1 Cost"_s), u"9"_s);
    hand.Click(1, Cost);
    EXPECT_EQ(hand.Row(), 1);
    EXPECT_EQ(Stored(u"Top 1 Cost"_s), u"8"_s);

    otherSets(u"Cost = 3"_s);
    hand.Click(0, Cost);
    hand.Type(u"4"_s);
    Plan({Answer::No});
    hand.Click(1, Cost);
    EXPECT_EQ(hand.Text(0, Cost), u"$3.00"_s);
    EXPECT_EQ(Stored(u"Top 1 Cost"_s), u"3"_s);
}

TEST_F(NotesGridTest, OfLongTextsTheChangedPartIsShown) {
    const QString begin = u"a line of it\n"_s.repeated(60);
    const auto otherSets = [&](const QString& text) {
        auto set = site_.other->OpenRecordset(u"Select * from [Note] where Name = \"Chairs\"",
                                              engine::RecordsetKind::Updatable);
        set->Edit();
        set->Set("Note", Value(text));
        set->Update();
    };
    otherSets(begin);
    Open(7);
    GridHand& hand = *hand_;
    hand.Click(0, Note);
    hand.Key(Qt::Key_F2);
    hand.Type(u"mine"_s);
    otherSets(begin + u"of the other"_s);
    Plan({Answer::No});
    hand.Click(1, Note);
    ASSERT_FALSE(Told().empty());
    const QString told = Told().back().text;
    EXPECT_TRUE(told.contains(u"mine") && told.contains(u"of the other\n")) << told.toStdString();
    EXPECT_LT(told.count(u'\n'), 36);

    // Short lines as well, whose end is what differs.
    const QString figures = u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10"_s;
    otherSets(figures);
    Open(7);
    hand_->Click(0, Note);
    hand_->Key(Qt::Key_F2);
    hand_->Type(u" mine"_s);
    otherSets(figures + u"\ntheirs"_s);
    Plan({Answer::No});
    hand_->Click(1, Note);
    EXPECT_TRUE(Told().back().text.contains(u"yours: \u202610 mine\n    the other desk's: \u202610\n        theirs\n"))
        << Told().back().text.toStdString();
}

TEST_F(NotesGridTest, ARowThatAnotherDeskDeletedIsNotLostUnasked) {
    GridHand& hand = *hand_;
    hand.Click(1, Name);
    hand.Type(u"Tea"_s);
    site_.other->Execute(u"Delete from [Note] Where Name = \"Coffee\"");
    Plan({Answer::Cancel, Answer::Yes});
    hand.Click(0, Name);
    EXPECT_EQ(hand.Row(), 1);
    EXPECT_TRUE(Told().back().text.contains(u"Name: Tea\nNoteCategory: Catering\nNote: hot"))
        << Told().back().text.toStdString();
    hand.Click(0, Name);
    EXPECT_EQ(Stored(u"Name, NoteCategory, [Note]"_s), u"Chairs|Setup|ten / Cable|Setup| / Tea|Catering|hot"_s);

    site_.other->Execute(u"Update [Note] Set Cost = 99 Where Name = \"Tea\"");
    site_.other->Execute(u"Delete from [Note] Where Name = \"Cable\"");
    // A changed row is asked about before it is deleted; a gone one is what was wanted.
    hand.view.scrollToBottom();
    QApplication::processEvents();
    QTest::mouseClick(&hand.grid, Qt::LeftButton, {}, QPoint(200, 6));
    hand.Text(3, Name);
    Plan({Answer::Yes, Answer::No});
    hand.Key(Qt::Key_Delete);
    EXPECT_TRUE(test_.dialogs.answers.empty());
    EXPECT_TRUE(Told().back().text.contains(u"the other desk's: $99.00"));
    EXPECT_EQ(site_.Names(), u"Tea"_s);
    EXPECT_EQ(hand.RowCount(), 2);
}

TEST_F(NotesGridTest, AFailedWriteIsReportedAndTheRowKept) {
    GridHand& hand = *hand_;
    hand.Type(u"Stools"_s);
    site_.other->Execute(u"Update [Note] Set Cost = 6 Where Name = \"Chairs\"");
    {
        // Locked by the other desk for longer than this one waits.
        engine::Transaction lock(*site_.other);
        test_.errors.answers = {Answer::Ignore, Answer::Retry, Answer::Ignore};
        hand.Key(Qt::Key_Return);
        hand.Key(Qt::Key_Down);
    }
    EXPECT_EQ(test_.errors.reports.at(0).place.module, u"Notes Form"_s);
    EXPECT_EQ(test_.errors.reports.at(0).error.Number(), 3260);
    EXPECT_EQ(hand.Row(), 0);
    EXPECT_EQ(hand.Text(0, Name), u"Stools"_s);
    hand.Key(Qt::Key_Down);
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
}

TEST_F(NotesGridTest, ARowIsStoredWhenAnotherControlTakesTheFocus) {
    GridHand& hand = *hand_;
    hand.Type(u"Stools"_s);
    Child<QPushButton>(*window_, u"cmdClose"_s).setFocus();
    QApplication::processEvents();
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
    // A refused entry takes the focus back.
    hand.Click(0, Category);
    hand.Type(u"nope"_s);
    Plan({Answer::Ok});
    Child<QPushButton>(*window_, u"cmdClose"_s).setFocus();
    QApplication::processEvents();
    EXPECT_TRUE(hand.IsEditing());
    EXPECT_TRUE(hand.grid.isAncestorOf(QApplication::focusWidget()));
}

TEST_F(NotesGridTest, AnEntryIsKeptWhenTheFocusComesBackBesideItsEditor) {
    GridHand& hand = *hand_;
    hand.Type(u"Stools"_s);
    hand.view.setFocus();
    hand.Key(Qt::Key_F2);
    EXPECT_EQ(qobject_cast<QLineEdit*>(hand.Editor())->text(), u"Stools"_s);
    hand.Type(u"Benches"_s);
    hand.view.setFocus();
    hand.Key(Qt::Key_Escape);
    EXPECT_FALSE(hand.IsEditing());
    EXPECT_EQ(hand.Text(0, Name), u"Stools"_s);
    hand.Type(u"Tables"_s);
    hand.view.setFocus();
    hand.Key(Qt::Key_Right);
    EXPECT_EQ(hand.Text(0, Name), u"Tables"_s);
    hand.Key(Qt::Key_Escape);
    EXPECT_EQ(hand.Text(0, Name), u"Chairs"_s);
    EXPECT_TRUE(window_->isVisible());
}

TEST_F(NotesGridTest, FontAndColumnsAreKeptForTheUser) {
    test_.dialogs.fonts = {FontChoice{u"Liberation Serif"_s, 14, true, false}};
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(hand_->view.viewport(), &press);
    hand_->view.horizontalHeader()->resizeSection(Note, 333);
    window_->reject();
    Open(8);
    EXPECT_EQ(hand_->view.font().family(), u"Liberation Serif"_s);
    EXPECT_EQ(hand_->view.font().pointSizeF(), 14);
    EXPECT_EQ(hand_->view.horizontalHeader()->sectionSize(Note), 333);
    // What is not sound is passed over.
    test_.userSettings.values[u"Velmora/Notes Grid/Columns"_s] = u"1,2,x"_s;
    test_.userSettings.values[u"Velmora/Notes Grid/Font"_s] = u"Liberation Serif|-3|0|0"_s;
    Open(8);
    EXPECT_EQ(hand_->view.font().family(), u"Liberation Sans"_s);
    EXPECT_GT(hand_->view.horizontalHeader()->sectionSize(Key), 20);
}

TEST_F(NotesGridTest, SelectedRowsArePrintedAsTheyWereSelected) {
    GridHand& hand = *hand_;
    Plan({Answer::Ok});
    Child<QAbstractButton>(*window_, u"Image1"_s).click();
    EXPECT_TRUE(Told().back().text.startsWith(u"No rows selected for Printing."));
    hand.Select(1);
    hand.Select(0, Qt::ControlModifier);
    Plan({Answer::Yes});
    Child<QAbstractButton>(*window_, u"Image1"_s).click();
    EXPECT_EQ(Told().back().text, u"Print 2 Rows?"_s);
    const QByteArray& text = delivery_.texts.at(0);
    EXPECT_TRUE(text.contains("Coffee\tCatering\thot\t\tFalse\tFalse\t\t\r\n")) << text.constData();
    EXPECT_LT(text.indexOf("Coffee"), text.indexOf("Chairs\tSetup\tten\t$5.00"));
    EXPECT_EQ(test_.printers.orientation, Orientation::Landscape);
}

} // namespace
} // namespace velmora
