#include "data/LookupLists.h"
#include "tests/desk_windows/DeskWindowFixture.h"

#include <QAction>
#include <QGroupBox>
#include <QListView>
#include <QPlainTextEdit>
#include <QTimer>

namespace velmora {
namespace {

class TasksPageTest : public DeskWindowTest {
protected:
    TasksPageTest() {
        fakes_.clock.now = *MakeDateTime({2026, 3, 6, 8, 0, 0});
        window_.reset();
        OpenDesk();
        Choose(u"View"_s);
    }
    QString Stored(const QByteArray& field) {
        return Sql("SELECT " + field + " FROM Reservation WHERE ID = " + Text(u"lblID"_s).toUtf8());
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::AltModifier) {
        QTest::keyClick(&Child(u"Page1"_s), key, modifiers);
    }
};

TEST_F(TasksPageTest, StepsThroughTheDayByButtonsAndKeys) {
    ASSERT_TRUE(Child(u"frEvent"_s).isVisible());
    const QString place = Text(u"lblPlace"_s);
    ASSERT_TRUE(place.startsWith(u"1 of "_s));
    const QString count = place.mid(5);
    EXPECT_FALSE(Child(u"cmdFirst"_s).isEnabled());
    EXPECT_FALSE(Child(u"cmdPrev"_s).isEnabled());
    const QString first = Text(u"lblID"_s);
    Click(u"cmdNext"_s);
    EXPECT_EQ(Text(u"lblPlace"_s), u"2 of "_s + count);
    EXPECT_NE(Text(u"lblID"_s), first);
    Key(Qt::Key_End);
    EXPECT_EQ(Text(u"lblPlace"_s), count + u" of "_s + count);
    EXPECT_FALSE(Child(u"cmdNext"_s).isEnabled());
    EXPECT_FALSE(Child(u"cmdLast"_s).isEnabled());
    Key(Qt::Key_PageUp);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Text(u"lblPlace"_s), count + u" of "_s + count);
    Key(Qt::Key_Home);
    EXPECT_EQ(Text(u"lblID"_s), first);
    // The numbers belong to this page alone.
    EXPECT_TRUE(Child(u"lblID"_s).isVisible());
    Choose(u"Daily"_s);
    EXPECT_FALSE(Child(u"lblID"_s).isVisible());
}

TEST_F(TasksPageTest, ATickIsStoredAtOnceAndOnlyTheTickedField) {
    EXPECT_TRUE(Child(u"chkSLockStart"_s).isEnabled());
    EXPECT_FALSE(Child(u"chkSLockEnd"_s).isEnabled());
    // Another desk ticks another box of the same reservation meanwhile.
    Sql("UPDATE Reservation SET TLockStart = 1 WHERE ID = " + Text(u"lblID"_s).toUtf8());
    Click(u"chkSLockStart"_s);
    EXPECT_EQ(Stored("SLockStart"), u"1"_s);
    EXPECT_EQ(Stored("TLockStart"), u"1"_s);
    Key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Stored("SLockStart"), u"0"_s);
    EXPECT_FALSE(Child<QCheckBox>(u"chkSLockStart"_s).isChecked());
    // Ticked reservations stay until the tasks are shown again.
    Click(u"chkSLockStart"_s);
    const QString ticked = Text(u"lblID"_s);
    Click(u"chkCompleted"_s);
    EXPECT_NE(Text(u"lblID"_s), ticked);
    Click(u"optViewType3"_s);
    EXPECT_TRUE(Child(u"chkTLockEnd"_s).isEnabled());
    EXPECT_FALSE(Child(u"chkSLockStart"_s).isEnabled());
}

TEST_F(TasksPageTest, AChangeOfAnotherDeskIsTold) {
    EXPECT_FALSE(Child(u"lblNotice"_s).isVisible());
    Sql("UPDATE Reservation SET Name = 'R&D renamed' WHERE ID = " + Text(u"lblID"_s).toUtf8());
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(window_.get(), &activation);
    EXPECT_TRUE(Child(u"lblNotice"_s).isVisible());
    EXPECT_FALSE(Text(u"lblNotice"_s).isEmpty());
    EXPECT_EQ(Child<QGroupBox>(u"frEvent"_s).title(), u"R&&D renamed"_s);
    // Nobody needs to touch the window for it.
    Sql("UPDATE Reservation SET SLockStart = 1 WHERE ID = " + Text(u"lblID"_s).toUtf8());
    auto& timer = Child<QTimer>(u"tmrRefresh"_s);
    EXPECT_LE(timer.interval(), 5000);
    timer.start(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Child<QCheckBox>(u"chkSLockStart"_s).isChecked(); }, 2000));
    // A reservation that is gone can be neither ticked nor noted.
    Sql("DELETE FROM Reservation WHERE ID = " + Text(u"lblID"_s).toUtf8());
    QApplication::sendEvent(window_.get(), &activation);
    EXPECT_FALSE(Child(u"chkSLockStart"_s).isEnabled());
    EXPECT_FALSE(Child(u"cmdNotes"_s).isEnabled());
    Click(u"cmdNext"_s);
    EXPECT_FALSE(Child(u"lblNotice"_s).isVisible());
    Click(u"cmdNotes"_s);
    EXPECT_EQ(notesOf, std::vector<qint32>{Text(u"lblID"_s).toInt()});
}

TEST_F(TasksPageTest, NothingIsShownWithoutTasksOrWithDatesThatAreNone) {
    TypeDate(u"StartDate"_s, u"1/1/2020"_s);
    TypeDate(u"EndDate"_s, u"1/2/2020"_s);
    Click(u"cmdShowTasks"_s);
    EXPECT_FALSE(Child(u"frEvent"_s).isVisible());
    EXPECT_TRUE(Child(u"lblNothing"_s).isVisible());
    fakes_.dialogs.answers = {Answer::Ok};
    TypeDate(u"StartDate"_s, u"1/3/2020"_s);
    Click(u"cmdShowTasks"_s);
    EXPECT_EQ(fakes_.dialogs.messages.at(0).text, u"End Date is before Start date, No Reservations can be found"_s);
    TypeDate(u"StartDate"_s, u"2/30/2020"_s);
    Click(u"cmdShowTasks"_s);
    EXPECT_EQ(fakes_.dialogs.messages.size(), 1U);
    EXPECT_TRUE(Child(u"StartDate"_s).hasFocus());
}

class StatusPageTest : public DeskWindowTest {
protected:
    StatusPageTest() { Choose(u"Status"_s); }
    QStringList List() const {
        const auto* model = Child<QListView>(u"lstStatus"_s).model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row) {
            texts += model->index(row, 0).data().toString();
        }
        return texts;
    }
    void Pick(const QString& text) {
        auto& list = Child<QListView>(u"lstStatus"_s);
        list.setCurrentIndex(list.model()->index(static_cast<int>(List().indexOf(text)), 0));
    }
    QStringList Summary() const { return Child<QPlainTextEdit>(u"picStatus"_s).toPlainText().split(u'\n'); }
};

TEST_F(StatusPageTest, ListsLocationsFirstAndWhatTheUserChoseThen) {
    EXPECT_TRUE(Child<QRadioButton>(u"optStatusType1"_s).isChecked());
    EXPECT_TRUE(List().contains(u"Boardroom"_s));
    EXPECT_FALSE(List().contains(u"Unused 301"_s));
    Pick(u"Boardroom"_s);
    EXPECT_EQ(Summary().at(0), u"Summary for Boardroom"_s);
    EXPECT_EQ(Summary().at(1), u"From 3/4/2026 10:00 AM Until 3/6/2026 in Boardroom - Conference : Ends at today's "
                               "midnight"_s);
    // Another visit leaves the list as it was.
    Choose(u"Daily"_s);
    Choose(u"Status"_s);
    EXPECT_EQ(Summary().at(0), u"Summary for Boardroom"_s);
    Click(u"optStatusType0"_s);
    EXPECT_EQ(List(), (QStringList{u"Abel, Anna"_s, u"Baker, Bob"_s, u"O\"Hara, Jo \"Jo\""_s}));
    Pick(u"O\"Hara, Jo \"Jo\""_s);
    EXPECT_EQ(Summary(), (QStringList{u"Summary for O\"Hara, Jo \"Jo\""_s,
                                      u"From 3/6/2026 9:00 AM Until 3/6/2026 10:00 AM in B12 - Office : Move"_s}));
}

TEST_F(StatusPageTest, TypingFindsEntries) {
    auto& find = Child<QLineEdit>(u"txtFind"_s);
    QTest::keyClicks(&find, u"12"_s);
    EXPECT_EQ(List(), (QStringList{u"A12"_s, u"B12"_s}));
    EXPECT_TRUE(Summary().at(0).isEmpty());
    find.clear();
    QTest::keyClicks(&find, u"board"_s);
    EXPECT_EQ(Summary().at(0), u"Summary for Boardroom"_s);
    QTest::keyClicks(&find, u"x"_s);
    EXPECT_TRUE(List().isEmpty());
    find.clear();
    EXPECT_GT(List().size(), 5);
}

TEST_F(StatusPageTest, TheFocusPassingThroughTheListPicksNothing) {
    auto& list = Child<QListView>(u"lstStatus"_s);
    Child(u"txtFind"_s).setFocus();
    QTest::keyClick(&Child(u"txtFind"_s), Qt::Key_Tab);
    ASSERT_TRUE(list.hasFocus());
    EXPECT_TRUE(Summary().at(0).isEmpty());
    EXPECT_FALSE(Child<QAction>(u"mnuDelete"_s).isEnabled());
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(Summary().at(0), u"Summary for "_s + List().at(0));
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(Summary().at(0), u"Summary for "_s + List().at(1));
    EXPECT_TRUE(Child<QAction>(u"mnuDelete"_s).isEnabled());
}

TEST_F(StatusPageTest, ALocationIsRenamedAndDeletedFromItsMenu) {
    Pick(u"B12"_s);
    fakes_.dialogs.texts = {u"B12 west"_s};
    Child<QAction>(u"mnuRename"_s).trigger();
    EXPECT_EQ(Sql("SELECT Name FROM Asset WHERE AssetID = 300"), u"B12 west"_s);
    EXPECT_TRUE(List().contains(u"B12 west"_s));
    EXPECT_EQ(Summary().at(0), u"Summary for B12 west"_s);
    // Also when the new name is not what was looked for.
    Child<QLineEdit>(u"txtFind"_s).setText(u"west"_s);
    Pick(u"B12 west"_s);
    fakes_.dialogs.texts = {u"B12 south of the court"_s};
    Child<QAction>(u"mnuRename"_s).trigger();
    EXPECT_EQ(Summary().at(0), u"Summary for B12 south of the court"_s);
    fakes_.dialogs.texts = {u"B12 west"_s};
    Child<QAction>(u"mnuRename"_s).trigger();
    // The name of another asset is refused.
    fakes_.dialogs.texts = {u"Boardroom"_s};
    fakes_.dialogs.answers = {Answer::Ok};
    Child<QAction>(u"mnuRename"_s).trigger();
    EXPECT_EQ(fakes_.dialogs.messages.back().text, u"Boardroom already exists. Each asset must have a unique name"_s);
    // Deleting asks, and asks again for the reservations.
    fakes_.dialogs.answers = {Answer::Yes, Answer::No};
    Child<QAction>(u"mnuDelete"_s).trigger();
    EXPECT_EQ(Sql("SELECT count(*) FROM Asset WHERE AssetID = 300"), u"1"_s);
    fakes_.dialogs.answers = {Answer::Yes, Answer::Yes};
    Child<QAction>(u"mnuDelete"_s).trigger();
    EXPECT_EQ(Sql("SELECT count(*) FROM Asset WHERE AssetID = 300"), u"0"_s);
    EXPECT_EQ(Sql("SELECT count(*) FROM Reservation WHERE Asset = 300"), u"0"_s);
    EXPECT_FALSE(List().contains(u"B12 west"_s));
    // A number below 1 puts no other asset into its place.
    Sql("INSERT INTO Asset (AssetID, Name) VALUES (-3, 'Annex')");
    FillAssetCollection(OpenedDatabase());
    Click(u"optStatusType0"_s);
    Click(u"optStatusType1"_s);
    Pick(u"A12"_s);
    const QByteArray number = Sql("SELECT AssetID FROM Asset WHERE Name = 'A12'").toUtf8();
    fakes_.dialogs.texts = {u"A12 east"_s};
    Child<QAction>(u"mnuRename"_s).trigger();
    EXPECT_EQ(Sql("SELECT Name FROM Asset WHERE AssetID = " + number), u"A12 east"_s);
    // One that another desk deleted meanwhile is told.
    Sql("INSERT INTO Asset (AssetID, Name) VALUES (32000, 'Tent')");
    Click(u"optStatusType0"_s);
    Click(u"optStatusType1"_s);
    Pick(u"Tent"_s);
    Sql("DELETE FROM Asset WHERE AssetID = 32000");
    fakes_.errors.answers = {Answer::Ignore};
    Child<QAction>(u"mnuRename"_s).trigger();
    EXPECT_EQ(fakes_.errors.reports.at(0).error.Description(), u"Record not found, possibly deleted by another user"_s);
    // Persons have no such menu.
    Click(u"optStatusType0"_s);
    Pick(u"Abel, Anna"_s);
    EXPECT_FALSE(Child<QAction>(u"mnuDelete"_s).isEnabled());
}

} // namespace
} // namespace velmora
