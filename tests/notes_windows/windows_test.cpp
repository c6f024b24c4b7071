// The three windows: what opens, closes and keeps them, and how they work together.
#include "tests/notes_windows/NotesFixture.h"

#include "base/Translate.h"

#include <QLabel>

namespace velmora {
namespace {

class NotesWindowsTest : public NotesTest {
protected:
    NotesWindowsTest() { owner_.show(); }
    Q_DISABLE_COPY_MOVE(NotesWindowsTest)
    ~NotesWindowsTest() override { EXPECT_EQ(test_.eventLoop.pointer, Pointer::Default); }

    void OpenNotes(qint32 reservation = 7) { velmora::OpenNotes(context_, reservation, &owner_); }
    static void Press(QWidget& window, const QString& name) { Child<QAbstractButton>(window, name).click(); }
    // The limit is only reached when it never comes.
    static void WaitUntil(const std::function<bool()>& done) { EXPECT_TRUE(QTest::qWaitFor(done, 60'000)); }

    QWidget owner_;
};

TEST_F(NotesWindowsTest, TheEditorRefusesToOpenWithoutCategories) {
    site_.other->Execute(u"Delete from NoteCategory");
    // The list of the categories takes its place; closed without one, nothing follows.
    test_.dialogs.answers = {Answer::Ok, Answer::Ok};
    Then<frmNoteCategory>([](frmNoteCategory& categories) { categories.reject(); });
    OpenNotes();
    Then<frmNoteCategory>([](frmNoteCategory& categories) {
        GridHand hand(categories, u"Table1"_s);
        hand.Type(u"Music"_s);
        categories.reject();
    });
    bool opened = false;
    Then<frmNotes>([&](frmNotes& window) {
        opened = GridHand(window).RowCount() == 4;
        window.reject();
    });
    OpenNotes();
    EXPECT_TRUE(opened);
    EXPECT_EQ(Told().at(0).text,
              u"There are no Note Categories Defined.  Define Note Categories before creating any Notes."_s);
    EXPECT_EQ(Told().at(0).icon, Icon::None);
}

TEST_F(NotesWindowsTest, ARowThatIsStillTypedIsStoredWhenAnotherWindowIsGoneTo) {
    QWidget another;
    Then<frmNotes>([&](frmNotes& window) {
        GridHand hand(window);
        hand.Type(u"Stools"_s);
        // A row that cannot be stored keeps the window, which says why.
        test_.dialogs.answers = {Answer::Ok};
        hand.Key(Qt::Key_Tab);
        hand.Type(u"nope"_s);
        // Neither is it given up because the last category went meanwhile.
        site_.other->Execute(u"Delete from NoteCategory");
        another.show();
        another.activateWindow();
        WaitUntil([&] { return !Told().empty(); });
        EXPECT_TRUE(window.isVisible());
        window.activateWindow();
        WaitUntil([&] { return window.isActiveWindow(); });
        QApplication::processEvents();
        EXPECT_TRUE(window.isVisible());
        hand.Key(Qt::Key_Escape);
        EXPECT_EQ(hand.Text(0, 2), u"Stools"_s);
        another.activateWindow();
    });
    OpenNotes();
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
    EXPECT_EQ(Told().size(), 1U);
}

TEST_F(NotesWindowsTest, AWindowUnloadedWithTheProgramAsksNothingAndLosesNothing) {
    const auto unload = [](frmNotes& window) {
        window.setProperty("unloading", true);
        window.close();
        EXPECT_FALSE(window.isVisible());
    };
    Then<frmNotes>([&](frmNotes& window) {
        GridHand(window).Type(u"Stools"_s);
        unload(window);
    });
    OpenNotes();
    EXPECT_EQ(site_.other->OpenRecordset(u"Select * from [Note] where Name = 'Stools'")->RecordCount(), 1);
    // A row that lacks its category cannot be stored.
    Then<frmNotes>([&](frmNotes& window) {
        GridHand hand(window);
        hand.Key(Qt::Key_End, Qt::ControlModifier);
        hand.Click(hand.RowCount() - 1, hand.Column());
        hand.Key(Qt::Key_Home);
        hand.Click(hand.RowCount() - 1, 2);
        hand.Type(u"Lamps"_s);
        unload(window);
    });
    OpenNotes();
    EXPECT_TRUE(Told().empty());
    EXPECT_TRUE(test_.log.entries.join(u'\n').contains(u"Lamps"_s));
}

TEST_F(NotesWindowsTest, AWindowOfItsOwnDoesNotCloseItAndKeepsTheEdit) {
    Then<frmNotes>([&](frmNotes& window) {
        GridHand hand(window);
        hand.Type(u"Stools"_s);
        hand.Key(Qt::Key_Tab);
        hand.Select(0);
        bool asked = false;
        QDialog question(&window);
        Then<QDialog>([&](QDialog& active) {
            asked = &active == &question && !window.isActiveWindow();
            active.accept();
        });
        question.exec();
        EXPECT_TRUE(asked);
        window.activateWindow();
        WaitUntil([&] { return window.isActiveWindow(); });
        QApplication::processEvents();
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{0}));
        EXPECT_EQ(hand.Text(0, 2), u"Stools"_s);
        EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
        window.reject();
    });
    OpenNotes();
    EXPECT_EQ(site_.Names(), u"Stools / Coffee / Cable"_s);
}

TEST_F(NotesWindowsTest, StandardNotesAreAddedInTheOrderOfSelection) {
    Then<frmNotes>([&](frmNotes& window) {
        GridHand notes(window);
        Then<frmSelectStdNotes>([&](frmSelectStdNotes& selection) {
            EXPECT_EQ(selection.windowTitle(), u"Select Asset Standard Notes"_s);
            GridHand hand(selection, u"Table1"_s);
            ASSERT_EQ(hand.RowCount(), 3);
            EXPECT_EQ(hand.Text(0, 0) + hand.Text(1, 0) + hand.Text(2, 0), u"CakeArchBench"_s);
            EXPECT_EQ(hand.Text(0, 3), u"$12.50"_s);
            hand.Key(Qt::Key_Delete);
            hand.Type(u"x"_s);
            EXPECT_FALSE(hand.IsEditing());
            // A range begins at the cell that was clicked, as at a selector.
            hand.Click(1, 1);
            hand.Click(2, 1, Qt::ShiftModifier);
            EXPECT_EQ(hand.view.SelectedRows(), (QList<int>{1, 2}));
            hand.Select(2);
            hand.Click(0, 1, Qt::ControlModifier);
            hand.Key(Qt::Key_Return);
        });
        Press(window, u"cmdAssetStdNotes"_s);
        EXPECT_EQ(notes.RowCount(), 6);
        EXPECT_EQ(notes.Text(4, 2), u"Cake"_s);
        // Cancelled, and confirmed without a selection.
        for (const auto& button : {u"cmdCancel"_s, u"cmdOK"_s}) {
            Then<frmSelectStdNotes>([&](frmSelectStdNotes& selection) {
                EXPECT_EQ(selection.windowTitle(), u"Select Event Standard Notes"_s);
                GridHand hand(selection, u"Table1"_s);
                EXPECT_EQ(hand.RowCount(), 1);
                EXPECT_TRUE(hand.view.SelectedRows().empty());
                if (button == u"cmdCancel") {
                    hand.Select(0);
                }
                Press(selection, button);
            });
            Press(window, u"cmdEventStdNotes"_s);
        }
        window.reject();
    });
    OpenNotes();
    EXPECT_EQ(site_.Shown(u"Select Name, NoteCategory, [Note], Cost from [Note] where Reservation = 7 and ID > 4"_s),
              u"Bench|Setup|long| / Cake|Catering|big|12.5"_s);
}

TEST_F(NotesWindowsTest, CompletedNotesAreSignedWithoutTheHelpOfTheEnvironment) {
    qunsetenv("USER");
    qunsetenv("USERNAME");
    Then<frmNotes>([](frmNotes& window) {
        GridHand hand(window);
        hand.Tick(0, 7);
        EXPECT_FALSE(hand.Text(0, 9).isEmpty());
        qputenv("USER", "cleo");
        window.reject();
    });
    OpenNotes();
    Then<frmNotes>([](frmNotes& window) {
        GridHand hand(window);
        hand.Tick(1, 7);
        EXPECT_EQ(hand.Text(1, 9), u"cleo"_s);
        window.reject();
    });
    OpenNotes();
}

TEST_F(NotesWindowsTest, AReservationWithoutAssetHasNoStandards) {
    Then<frmNotes>([&](frmNotes& window) {
        for (const auto& [button, owner] : {std::pair{u"cmdAssetStdNotes"_s, u"this asset"_s},
                                            std::pair{u"cmdEventStdNotes"_s, u"this event type"_s}}) {
            Then<frmSelectStdNotes>([&, named = owner](frmSelectStdNotes& selection) {
                GridHand hand(selection, u"Table1"_s);
                EXPECT_EQ(hand.RowCount(), 0);
                hand.ClickCaption();
                hand.Key(Qt::Key_Space);
                EXPECT_TRUE(Child<QLabel>(selection, u"Label1"_s).text().contains(named));
                Press(selection, u"cmdOK"_s);
            });
            Press(window, button);
        }
        window.reject();
    });
    OpenNotes(8);
    EXPECT_EQ(site_.Shown(u"Select Name from [Note] where Reservation = 8"_s), QString());
}

TEST_F(NotesWindowsTest, AStandardNoteDeletedMeanwhileAddsNothingAtAll) {
    Then<frmNotes>([&](frmNotes& window) {
        Then<frmSelectStdNotes>([&](frmSelectStdNotes& selection) {
            GridHand hand(selection, u"Table1"_s);
            hand.Key(Qt::Key_A, Qt::ControlModifier);
            site_.other->Execute(u"Delete from StandardNotes Where Name = \"Bench\"");
            test_.errors.answers = {Answer::Ignore};
            Press(selection, u"cmdOK"_s);
            EXPECT_TRUE(selection.isVisible());
            Press(selection, u"cmdCancel"_s);
        });
        Press(window, u"cmdAssetStdNotes"_s);
        window.reject();
    });
    OpenNotes();
    EXPECT_TRUE(test_.errors.reports.at(0).error.Description().contains(u"\"Bench\" was deleted"));
    EXPECT_EQ(test_.errors.reports[0].place.module, u"Select Standard Notes"_s);
    EXPECT_EQ(site_.Names(), u"Chairs / Coffee / Cable"_s);
}

TEST_F(NotesWindowsTest, CategoriesAreEditedAndOfferedAtOnce) {
    test_.program.Part<TranslationDictionary>().Add(u"Note Categories"_s, u"Kategorien"_s);
    Then<frmNotes>([&](frmNotes& window) {
        GridHand notes(window);
        Then<frmNoteCategory>([&](frmNoteCategory& categories) {
            EXPECT_EQ(categories.windowTitle(), u"Kategorien"_s);
            GridHand hand(categories, u"Table1"_s);
            hand.Key(Qt::Key_End, Qt::ControlModifier);
            hand.Type(u"Music"_s);
            // A name that is there already is reported with the data error's number, and stays to be mended.
            hand.Key(Qt::Key_Return);
            hand.Type(u"setup"_s);
            test_.errors.answers = {Answer::Ignore};
            hand.Key(Qt::Key_Up);
            EXPECT_EQ(test_.errors.reports.at(0).error.Number(), 3022);
            EXPECT_EQ(test_.errors.reports[0].place.module, u"Note Category Form"_s);
            hand.Key(Qt::Key_Escape);
            // Gone to another window and back, the cursor is where it was.
            hand.Click(2, 0);
            QWidget another;
            another.show();
            another.activateWindow();
            WaitUntil([&] { return another.isActiveWindow(); });
            QApplication::processEvents();
            categories.activateWindow();
            WaitUntil([&] { return categories.isActiveWindow(); });
            QApplication::processEvents();
            EXPECT_EQ(hand.Row(), 2);
            categories.reject();
        });
        notes.Click(1, 4);
        Press(window, u"Command1"_s);
        EXPECT_EQ(notes.Row(), 1);
        EXPECT_EQ(notes.Column(), 4);
        notes.Click(0, 3);
        notes.Type(u"Music"_s);
        notes.Key(Qt::Key_Return);
        window.reject();
    });
    OpenNotes();
    EXPECT_EQ(site_.Shown(u"Select Top 1 NoteCategory from [Note]"_s), u"Music"_s);
    EXPECT_EQ(site_.Shown(u"NoteCategory"_s), u"Catering / Music / Setup / Unused"_s);
}

TEST_F(NotesWindowsTest, ACategoryInUseIsRenamedAndDeletedOnlyAfterAQuestion) {
    Then<frmNoteCategory>([&](frmNoteCategory& window) {
        GridHand hand(window, u"Table1"_s);
        const auto rename = [&](int row, const QString& name) {
            hand.Click(row, 0);
            hand.Type(name);
            hand.Key(Qt::Key_Return);
        };
        test_.dialogs.answers = {Answer::No};
        rename(1, u"Rigging"_s);
        EXPECT_TRUE(Told().at(0).text.startsWith(
            u"The category \"Setup\" is used by 3 notes and 2 standard notes. Rename it to \"Rigging\""))
            << Told()[0].text.toStdString();
        EXPECT_EQ(hand.Text(1, 0), u"Setup"_s);
        test_.dialogs.answers = {Answer::Yes};
        rename(1, u"Rigging"_s);
        EXPECT_EQ(site_.Shown(u"NoteCategory"_s), u"Catering / Rigging / Unused"_s);
        EXPECT_EQ(site_.Shown(u"Select NoteCategory from [Note]"_s), u"Rigging / Catering / Rigging / Rigging"_s);
        EXPECT_EQ(site_.Shown(u"Select NoteCategory from StandardNotes"_s), u"Rigging / Rigging / Catering"_s);
        // Nobody uses it: no question.
        rename(2, u"Spare"_s);

        hand.Key(Qt::Key_A, Qt::ControlModifier);
        test_.dialogs.answers = {Answer::Yes, Answer::No};
        hand.Key(Qt::Key_Delete);
        EXPECT_EQ(Told().back().text.section(u"\n\n"_s, 0, 0),
                  u"\"Catering\" is used by 1 notes and 1 standard notes.\n\"Rigging\" is used by 3 notes and 2 "
                  "standard notes."_s);
        EXPECT_EQ(site_.Shown(u"NoteCategory"_s), u"Catering / Rigging / Spare"_s);
        hand.Select(2);
        test_.dialogs.answers = {Answer::Yes};
        hand.Key(Qt::Key_Delete);
        EXPECT_EQ(site_.Shown(u"NoteCategory"_s), u"Catering / Rigging"_s);
        // Written, but not kept because another desk reads: neither is renamed and the name stays typed.
        {
            const engine::ReadScope reading(*site_.other);
            site_.other->OpenRecordset(u"NoteCategory");
            test_.errors.answers = {Answer::Ignore};
            test_.dialogs.answers = {Answer::Yes};
            rename(1, u"Later"_s);
            EXPECT_EQ(test_.errors.reports.at(0).error.Number(), 3260);
        }
        EXPECT_EQ(hand.Text(1, 0), u"Later"_s);
        EXPECT_EQ(site_.Shown(u"Select Top 1 NoteCategory from [Note]"_s), u"Rigging"_s);
        test_.dialogs.answers = {Answer::Yes};
        hand.Key(Qt::Key_Up);
        EXPECT_EQ(site_.Shown(u"Select Top 1 NoteCategory from [Note]"_s), u"Later"_s);
        window.reject();
    });
    frmNoteCategory(context_, &owner_).ShowModal();
    EXPECT_TRUE(test_.dialogs.answers.empty());
}

TEST_F(NotesWindowsTest, AFailureToReadIsReportedAndNothingShown) {
    site_.other->Execute(u"Delete from StoredQuery Where Name = \"AssetStdNoteSelect\"");
    site_.desk->Idle(engine::IdleOption::RefreshCache);
    Then<frmNotes>([&](frmNotes& window) {
        test_.errors.answers = {Answer::Retry, Answer::Ignore};
        Press(window, u"cmdAssetStdNotes"_s);
        EXPECT_TRUE(window.isVisible());
        window.reject();
    });
    OpenNotes();
    ASSERT_EQ(test_.errors.reports.size(), 2U);
    EXPECT_EQ(test_.errors.reports[0].place.procedure, u"Activate"_s);
    EXPECT_EQ(test_.errors.reports[0].place.task, u"undefined"_s);
}

} // namespace
} // namespace velmora
