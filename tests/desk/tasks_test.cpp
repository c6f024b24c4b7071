#include "tasks/Tasks.h"
#include "tests/data/RawStore.h"
#include "tests/desk/DeskFixture.h"
#include "tests/support/Folders.h"

namespace velmora {
namespace {

Date March(int day) {
    return *MakeDate(2026, 3, day);
}

// The task view on the test site, with a second desk on the same file.
class TasksTest : public DeskFixture, public TaskView {
protected:
    explicit TasksTest(const QString& startupArgument = {}) : DeskFixture(startupArgument) {
        choices_.DateRange1 = {March(6), March(7)};
    }

    void ShowTask(const ShownTask& task) override {
        shown = task;
        ++timesShown;
    }
    void HideTask(const QString& text) override {
        shown.reset();
        why = text;
    }

    // A database that does not wait long for another desk's lock.
    std::unique_ptr<engine::Database> Open() const {
        engine::OpenOptions options;
        options.busyMilliseconds = 50;
        return engine::Database::Open(folder_.filePath(u"Velmora.MDB"_s), options);
    }
    // What another desk does.
    void Other(const QString& sql) { other_.Run(sql); }
    // All fields of a reservation as the store has them.
    QStringList Stored(int id) {
        return other_.Rows(u"SELECT * FROM Reservation WHERE ID = "_s + QString::number(id)).value(0).split(u'|');
    }
    // Shows the tasks, steps through all of them and returns their numbers in order.
    QList<int> Selected() {
        QList<int> ids;
        tasks_.ShowTasks();
        while (shown) {
            ids += shown->details.lblID.toInt();
            if (!shown->hasNext) {
                break;
            }
            tasks_.Next();
        }
        std::sort(ids.begin(), ids.end());
        return ids;
    }
    // Shows the moves in and steps to a reservation.
    void GoTo(int id) {
        tasks_.ShowTasks();
        while (shown && shown->details.lblID.toInt() != id && shown->hasNext) {
            tasks_.Next();
        }
        ASSERT_TRUE(shown && shown->details.lblID.toInt() == id);
    }
    QString LastMessage() const {
        return fakes_.dialogs.messages.empty() ? u""_s : fakes_.dialogs.messages.back().text;
    }

    std::unique_ptr<engine::Database> desk_ = Open();
    test::RawStore other_{desk_->Location()};
    std::optional<ShownTask> shown;
    QString why;
    int timesShown = 0;
    FaultyDatabase faultyDesk_{*desk_};
    TaskChoices choices_;
    Tasks tasks_{fakes_.program, choices_, faultyDesk_, *this};
};

constexpr int sLockStart = 12;

TEST_F(TasksTest, SelectsByKindRangeAndOptions) {
    // Around the limits of March 20: starts from three minutes before the day, ends until two minutes behind it.
    Other(u"INSERT INTO Reservation (ID, Asset, Start, \"End\", SLockEnd) VALUES "
          "(101, 12, '2026-03-19 23:57:00', '2026-03-20 00:02:00', 0), "
          "(102, 255, '2026-03-19 23:57:01', '2026-03-20 00:02:01', 0), "
          "(103, 256, '2026-03-20 23:57:59', '2026-03-21 00:01:59', 1), "
          "(104, 256, '2026-03-20 23:58:00', '2026-03-21 00:02:00', 0), "
          "(105, 256, '2026-03-20 12:00:00', '2026-03-20 13:00:00', NULL)"_s);
    Other(u"UPDATE Reservation SET SLockStart = 1, TLockEnd = 1 WHERE ID = 102"_s);
    choices_.DateRange1 = {March(20), March(21)};
    for (const QStringList& c : TestRows(u"desk/selections.txt"_s)) {
        SCOPED_TRACE(c.join(u' ').toStdString());
        choices_.ViewType = c[0].toShort();
        choices_.chkCompleted = c[1] == u"yes";
        choices_.chkConferenceView = c[2] == u"yes";
        QStringList selected;
        for (const int reservation : Selected()) {
            selected += QString::number(reservation);
        }
        EXPECT_EQ(selected.join(u' '), c[3]);
        if (!selected.empty()) {
            EXPECT_EQ(shown->tickable, TaskOfViewType(choices_.ViewType));
        }
    }
}

class TasksOfB1Test : public TasksTest {
protected:
    TasksOfB1Test() : TasksTest(u"  b1 \"æ "_s) {}
};

TEST_F(TasksOfB1Test, TheStartupArgumentIsABeginningOfTheName) {
    EXPECT_EQ(Selected(), QList<int>{13});
}

TEST_F(TasksTest, ShowsWhatIsStored) {
    GoTo(1);
    const TaskDetails expected{.frEvent = u"Budget <Q1> & more"_s,
                               .lblLastName = u"Abel"_s,
                               .lblFirstName = u"Anna"_s,
                               .lblAsset = u"12"_s,
                               .lblAssetName = u"Boardroom"_s,
                               .lblAttendees = u"12"_s,
                               .lblEnd = u"3/6/2026 9:00 AM - 5:00 PM"_s,
                               .lblEvent = u"Conference"_s,
                               .lblOrganization = u"Finance"_s,
                               .lblID = u"1"_s};
    EXPECT_EQ(shown->details, expected) << shown->details.Differences(expected).join(u',').toStdString();
    EXPECT_EQ(tasks_.ShownReservation(), 1);

    GoTo(4);
    EXPECT_EQ(shown->details.lblLastName, QString());
    EXPECT_EQ(shown->details.lblEnd, u"3/6/2026 Through 3/7/2026 12:30 AM"_s);
    EXPECT_TRUE(shown->details.Done(TaskKind::PhoneConnect) && shown->details.Done(TaskKind::PhoneDisconnect));
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn) || shown->details.Done(TaskKind::MoveOut));

    Other(u"UPDATE Reservation SET \"End\" = NULL WHERE ID = 5"_s);
    Other(u"UPDATE Reservation SET \"End\" = NULL WHERE ID = 13"_s);
    GoTo(5);
    EXPECT_EQ(shown->details.lblEnd, u"3/6/2026 9:00 AM - Permanent"_s);
    GoTo(13);
    EXPECT_EQ(shown->details.lblEnd, u"3/6/2026 1:00 PM"_s);
}

TEST_F(TasksTest, NavigationKnowsItsPlace) {
    const auto buttons = [this] { return std::pair(shown->hasPrevious, shown->hasNext); };
    choices_.DateRange1 = {March(7), March(10)};
    tasks_.ShowTasks();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->place, u"1 of 2"_s);
    EXPECT_EQ(buttons(), std::pair(false, true));
    tasks_.Previous();
    EXPECT_EQ(shown->position, 1);
    tasks_.Last();
    EXPECT_EQ(shown->place, u"2 of 2"_s);
    EXPECT_EQ(buttons(), std::pair(true, false));
    const QString last = shown->details.lblID;
    tasks_.Next();
    EXPECT_EQ(shown->details.lblID, last);
    tasks_.First();
    EXPECT_NE(shown->details.lblID, last);

    choices_.DateRange1 = {March(9), March(10)};
    tasks_.ShowTasks();
    EXPECT_EQ(shown->place, u"1 of 1"_s);
    EXPECT_EQ(buttons(), std::pair(false, false));

    choices_.DateRange1 = {March(25), March(26)};
    tasks_.ShowTasks();
    EXPECT_FALSE(shown);
    EXPECT_EQ(why, u"There are no reservations for this choice."_s);
    tasks_.Next();
    tasks_.Last();
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_FALSE(shown || tasks_.ShownReservation());
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
}

TEST_F(TasksTest, ATickWritesItsOneFieldAtOnce) {
    choices_.chkCompleted = true;
    GoTo(1);
    QStringList expected = Stored(1);
    // Meanwhile another desk ticks another box and renames the event: neither is undone, and both are told.
    Other(u"UPDATE Reservation SET TLockStart = 1, Name = 'Renamed' WHERE ID = 1"_s);
    tasks_.StoreTick(TaskKind::MoveIn, true);
    expected[4] = u"Renamed"_s;
    expected[sLockStart] = u"1"_s;
    expected[14] = u"1"_s;
    EXPECT_EQ(Stored(1), expected);
    EXPECT_TRUE(shown->details.Done(TaskKind::MoveIn) && shown->details.Done(TaskKind::PhoneConnect));
    EXPECT_EQ(shown->notice, u"Changed by another desk: Name, Phone Connect"_s);
    // It stays in the selection until that is made anew.
    tasks_.First();
    tasks_.Last();
    EXPECT_FALSE(Selected().contains(1));

    choices_.chkCompleted = false;
    GoTo(1);
    EXPECT_EQ(shown->notice, QString());
    tasks_.StoreTick(TaskKind::MoveIn, false);
    expected[sLockStart] = u"0"_s;
    EXPECT_EQ(Stored(1), expected);
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_EQ(shown->notice, QString()) << "one's own tick is no news";
}

TEST_F(TasksTest, ATickThatAnotherDeskMadeCountsAsMade) {
    GoTo(1);
    Other(u"UPDATE Reservation SET SLockStart = 1 WHERE ID = 1"_s);
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_TRUE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_EQ(shown->notice, u"Changed by another desk: Move In"_s);
    EXPECT_EQ(Stored(1)[sLockStart], u"1"_s);

    // Another desk emptied the flag: that is no tick.
    Other(u"UPDATE Reservation SET SLockStart = NULL WHERE ID = 1"_s);
    tasks_.StoreTick(TaskKind::MoveIn, false);
    EXPECT_EQ(Stored(1)[sLockStart], u"0"_s);
    // An empty flag is shown as open, and is ticked like any other.
    GoTo(7);
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn));
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_EQ(Stored(7)[sLockStart], u"1"_s);
}

TEST_F(TasksTest, ATickThatCannotBeStoredIsTakenBackWithTheReason) {
    GoTo(1);
    Other(u"BEGIN IMMEDIATE"_s);
    fakes_.errors.answers = {Answer::Ignore};
    tasks_.StoreTick(TaskKind::MoveIn, true);
    ASSERT_EQ(fakes_.errors.reports.size(), 1U);
    EXPECT_EQ(fakes_.errors.reports[0].error.Number(), static_cast<int>(engine::EngineErrorNumber::RecordLocked));
    EXPECT_EQ(fakes_.errors.reports[0].place.procedure, u"Store Task"_s);
    EXPECT_EQ(fakes_.errors.reports[0].place.task, u"Move In"_s);
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
    Other(u"ROLLBACK"_s);
    EXPECT_EQ(Stored(1)[sLockStart], u"0"_s);

    // Nothing can be read either: what is known stays on the screen.
    Other(u"BEGIN EXCLUSIVE"_s);
    fakes_.errors.answers = {Answer::Retry, Answer::Ignore};
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_EQ(fakes_.errors.reports.size(), 3U);
    EXPECT_EQ(shown->details.frEvent, u"Budget <Q1> & more"_s);
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn));
    Other(u"ROLLBACK"_s);
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_TRUE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_EQ(Stored(1)[sLockStart], u"1"_s);
}

TEST_F(TasksTest, AReservationThatIsGoneIsToldAndLeftAside) {
    GoTo(1);
    Other(u"DELETE FROM Reservation WHERE ID = 1"_s);
    fakes_.dialogs.answers = {Answer::Ok};
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_EQ(LastMessage(), u"Record not found, possibly deleted by another user"_s);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->notice, u"Another desk deleted this reservation."_s);
    EXPECT_EQ(shown->details.frEvent, u"Budget <Q1> & more"_s) << "so that it is clear which one";
    EXPECT_FALSE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_FALSE(shown->tickable || tasks_.ShownReservation());
    tasks_.StoreTick(TaskKind::MoveIn, true);

    // One that was never shown; the way on stays open.
    tasks_.ShowTasks();
    const int count = shown->count;
    Other(u"DELETE FROM Reservation"_s);
    tasks_.Next();
    EXPECT_EQ(shown->place, u"2 of %1"_s.arg(count));
    EXPECT_FALSE(shown->notice.isEmpty());
    EXPECT_EQ(shown->details, TaskDetails());
    tasks_.Last();
    EXPECT_EQ(shown->position, count);
}

TEST_F(TasksTest, WhatAnotherDeskChangesIsSeen) {
    tasks_.ShowTasks();
    const QString first = shown->details.lblID;
    tasks_.Next();
    Other(u"UPDATE Reservation SET Organization = 'Elsewhere', Asset = 255 WHERE ID = "_s + first);
    tasks_.Previous();
    EXPECT_EQ(shown->details.lblOrganization, u"Elsewhere"_s);
    EXPECT_EQ(shown->notice, u"Changed by another desk: Organization, Location"_s);

    const int times = timesShown;
    tasks_.Refresh();
    EXPECT_EQ(timesShown, times) << "nothing new, and the notice stays";
    Other(u"UPDATE Reservation SET SLockStart = 1 WHERE ID = "_s + first);
    tasks_.Refresh();
    EXPECT_TRUE(shown->details.Done(TaskKind::MoveIn));
    EXPECT_EQ(shown->notice, u"Changed by another desk: Move In"_s);
    // In another room the reservation is another record of the join; it is gone after all the same.
    Other(u"UPDATE Reservation SET Asset = 256 WHERE ID = "_s + first);
    tasks_.StoreTick(TaskKind::MoveIn, false);
    EXPECT_EQ(shown->notice, u"Changed by another desk: Location"_s);
    Other(u"UPDATE Reservation SET Asset = 12 WHERE ID = "_s + first);
    tasks_.Refresh();
    tasks_.StoreTick(TaskKind::MoveIn, true);
    EXPECT_EQ(Stored(first.toInt())[sLockStart], u"1"_s);
    Other(u"DELETE FROM Reservation WHERE ID = "_s + first);
    const int timesBefore = timesShown;
    tasks_.Refresh();
    tasks_.Refresh();
    EXPECT_EQ(timesShown, timesBefore + 1);
    EXPECT_FALSE(shown->tickable);

    Other(u"BEGIN EXCLUSIVE"_s);
    tasks_.Refresh();
    EXPECT_TRUE(shown);
    Other(u"ROLLBACK"_s);
}

TEST_F(TasksTest, FailuresAreToldAndHideTheView) {
    fakes_.dialogs.answers = {Answer::Ok, Answer::Ok, Answer::Ok, Answer::Ok};
    tasks_.ShowTasks();
    ASSERT_TRUE(shown);
    choices_.DateRange1 = {March(7), March(6)};
    tasks_.ShowTasks();
    EXPECT_EQ(LastMessage(), u"End Date is before Start date, No Reservations can be found"_s);
    EXPECT_FALSE(shown);

    choices_.DateRange1 = {March(6), March(7)};
    faultyDesk_.failures[u"SELECT * FROM Asset INNER"_s] = 1;
    tasks_.ShowTasks();
    EXPECT_EQ(LastMessage(), u"Error Occured Selecting and Displaying Reservations: the share is away"_s);
    EXPECT_FALSE(shown);
    EXPECT_EQ(why, QString());
    tasks_.Next();
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);

    tasks_.ShowTasks();
    Other(u"BEGIN EXCLUSIVE"_s);
    tasks_.Next();
    EXPECT_TRUE(LastMessage().startsWith(u"Error occured displaying event: "_s));
    EXPECT_FALSE(shown || tasks_.ShownReservation());
    Other(u"ROLLBACK"_s);
    tasks_.DisplayEvent();
    EXPECT_EQ(shown->position, 2);

    choices_.DateRange1.EndDate.reset();
    tasks_.ShowTasks();
    EXPECT_FALSE(shown);
    EXPECT_FALSE(why.isEmpty());
    choices_.DateRange1.EndDate = March(7);
    choices_.ViewType = 4;
    tasks_.ShowTasks();
    EXPECT_TRUE(LastMessage().contains(u'4'));
}

} // namespace
} // namespace velmora
