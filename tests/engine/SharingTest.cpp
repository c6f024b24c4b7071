#include "engine/sqlite/FileHandle.h"
#include "tests/engine/Child.h"
#include "tests/engine/TestSite.h"

#include <fcntl.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

// However slow the machine is, a wait that ends well takes less.
constexpr int tenMinutes = 600'000;

constexpr QStringView attendees = u"SELECT Attendees FROM Reservation";

// What another copy of the program does with the record of the test: it reads it, stands still, and then changes it.
using Task = std::function<void(Recordset& row, const Child& self)>;

Task Edit(const char* field, int value) {
    return [=](Recordset& row, const Child& self) {
        row.Edit();
        row.Set(field, value);
        self.StandStill();
        row.Update();
    };
}

void Delete(Recordset& row, const Child& self) {
    self.StandStill();
    row.Delete();
}

// Adds one to the head count, again when another one was first.
void CountUp(Recordset& row, const Child& self) {
    self.StandStill();
    for (int done = 0; done < 100;) {
        row.Edit();
        row.Set("Attendees", row["Attendees"].ToInteger() + 1);
        try {
            row.Update();
            ++done;
        } catch (const EngineError& error) {
            if (error.Kind() != EngineErrorNumber::RecordChanged) {
                throw;
            }
            row.CancelUpdate();
        }
    }
}

// Writes pairs of notes, each pair in one transaction, until it is killed.
void WritePairs(Database& database) {
    const QString filler(3000, u'x');
    for (qint64 pair = 0;; ++pair) {
        Transaction transaction(database);
        const auto notes = database.OpenRecordset(u"Select * from [Note] where ID = 0", RecordsetKind::Updatable);
        for (int half = 0; half < 2; ++half) {
            notes->AddNew();
            notes->Set("Reservation", pair);
            notes->Set("Note", filler);
            notes->Update();
        }
        database.Execute(QString(u"Update Reservation set Attendees = "_s + QString::number(pair)));
        transaction.Commit();
    }
}

// True while a writer has all but the readers out of its way: it holds the byte that the store locks before it ends a
// change.
bool IsWriterWaiting(const sqlite::FileHandle& file) {
    struct flock pendingByte = {};
    pendingByte.l_type = F_RDLCK;
    pendingByte.l_whence = SEEK_SET;
    pendingByte.l_start = 0x40000000;
    pendingByte.l_len = 1;
    return ::fcntl(file.Get(), F_OFD_GETLK, &pendingByte) == 0 && pendingByte.l_type == F_WRLCK;
}

class Sharing : public ::testing::Test {
protected:
    Sharing() { site_.Run("INSERT INTO Reservation (ID, Attendees, SLockStart, TLockStart) VALUES (1, 0, 0, 0)"); }

    // Another copy of the program with the record in its hands.
    std::unique_ptr<Child> Start(const Task& task) const {
        auto child = std::make_unique<Child>([&](const Child& self) {
            const auto database = site_.Open({.busyMilliseconds = tenMinutes});
            task(*Reservation(*database, 1), self);
        });
        child->AwaitReady();
        return child;
    }
    QString Flags() const {
        return site_.Stored("SELECT ifnull(max(SLockStart || TLockStart), 'gone') FROM Reservation");
    }

    TestSite site_;
};

} // namespace

// Two copies have read the record; both then do what they have in mind, one behind the other.
TEST_F(Sharing, TwoCopiesChangeOneRecord) {
    struct Case {
        const char* what;
        Task first;
        Task second;
        int secondResult;
        QStringView flags;
    };
    const Task start = Edit("SLockStart", 1);
    const Task phone = Edit("TLockStart", 1);
    constexpr int changed = static_cast<int>(EngineErrorNumber::RecordChanged) & 0xff;
    constexpr int deleted = static_cast<int>(EngineErrorNumber::RecordDeleted) & 0xff;
    for (const Case& each :
         {Case{"two fields", start, phone, 0, u"11"}, Case{"one field", start, start, changed, u"10"},
          Case{"delete, edit", Delete, phone, deleted, u"gone"}, Case{"delete twice", Delete, Delete, deleted, u"gone"},
          Case{"edit, delete", start, Delete, 0, u"gone"}}) {
        SCOPED_TRACE(each.what);
        site_.Run("DELETE FROM Reservation; INSERT INTO Reservation (ID, SLockStart, TLockStart) VALUES (1, 0, 0)");
        const auto first = Start(each.first);
        const auto second = Start(each.second);
        first->GoOn();
        EXPECT_EQ(first->Result(), 0);
        second->GoOn();
        EXPECT_EQ(second->Result(), each.secondResult);
        EXPECT_EQ(Flags(), each.flags);
    }
}

TEST_F(Sharing, EightWritersLoseNoUpdate) {
    std::vector<std::unique_ptr<Child>> writers(8);
    std::generate(writers.begin(), writers.end(), [this] { return Start(CountUp); });
    for (const auto& writer : writers) {
        writer->GoOn();
    }
    for (const auto& writer : writers) {
        EXPECT_EQ(writer->Result(), 0);
    }
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation"), u"800");
}

TEST_F(Sharing, KilledWritersLeaveASoundFile) {
    for (int round = 0; round < 8; ++round) {
        Child writer([this](const Child&) { WritePairs(*site_.Open({.busyMilliseconds = tenMinutes})); });
        const auto database = site_.Open({.busyMilliseconds = tenMinutes});
        const auto count = [&] { return Shown(*database, u"SELECT Count(*) AS N FROM Note").toInt(); };
        const int enough = count() + 6 + round;
        while (writer.IsRunning() && count() < enough) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(writer.IsRunning()) << "ended with " << writer.Result();
        writer.Kill();
        EXPECT_EQ(count() % 2, 0) << "half a transaction was kept";
    }
    EXPECT_EQ(site_.Stored("PRAGMA integrity_check"), u"ok");
}

// A reader of long breath: the change waits for it at its end, then gives up, takes itself back and can be repeated.
TEST_F(Sharing, AReaderInTheWayIsWaitedForAndThenReported) {
    Child reader([this](const Child& self) {
        const auto database = site_.Open({.busyMilliseconds = tenMinutes});
        const ReadScope reading(*database);
        Shown(*database, attendees);
        self.StandStill();
    });
    reader.AwaitReady();
    const auto database = site_.Open({.busyMilliseconds = 200});
    const auto row = Reservation(*database, 1);
    row->Edit();
    row->Set("Attendees", 5);
    ExpectError(EngineErrorNumber::RecordLocked, u"locked", [&] { row->Update(); });
    ExpectError(EngineErrorNumber::RecordLocked, u"locked",
                [&] { database->Execute(u"Update Reservation set Attendees = 6"); });
    EXPECT_EQ((*row)["Attendees"].ToInteger(), 5);
    reader.GoOn();
    EXPECT_EQ(reader.Result(), 0);
    row->Update();
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation"), u"5");
}

// Reads inside a scope, inner scopes included, see one state; other users' changes wait until the outermost ends.
TEST_F(Sharing, AReadScopeKeepsItsStateUntilTheOutermostEnds) {
    const auto reader = site_.Open();
    const auto writer = site_.Open({.busyMilliseconds = 50});
    {
        const ReadScope outer(*reader);
        EXPECT_EQ(Shown(*reader, attendees), u"0");
        {
            const ReadScope inner(*reader);
            EXPECT_EQ(Shown(*reader, attendees), u"0");
        }
        ExpectError(EngineErrorNumber::RecordLocked, u"locked",
                    [&] { writer->Execute(u"UPDATE Reservation SET Attendees = 1"); });
        EXPECT_EQ(Shown(*reader, attendees), u"0");
    }
    EXPECT_EQ(writer->Execute(u"UPDATE Reservation SET Attendees = 2"), 1);
    EXPECT_EQ(Shown(*reader, attendees), u"2");
}

TEST_F(Sharing, AChangeEndsTheReadScopesAroundIt) {
    const auto reader = site_.Open();
    const auto writer = site_.Open({.busyMilliseconds = 50});
    const ReadScope outer(*reader);
    const ReadScope inner(*reader);
    EXPECT_EQ(Shown(*reader, attendees), u"0");
    EXPECT_EQ(reader->Execute(u"UPDATE Reservation SET Attendees = Attendees + 1"), 1);
    EXPECT_EQ(writer->Execute(u"UPDATE Reservation SET Attendees = Attendees + 1"), 1);
    EXPECT_EQ(Shown(*reader, attendees), u"2");
    {
        Transaction changes(*reader);
        reader->Execute(u"UPDATE Reservation SET Attendees = 9");
        changes.Commit();
    }
    EXPECT_EQ(Shown(*writer, attendees), u"9");
}

TEST_F(Sharing, AnotherProcessWaitsUntilAReadScopeEnds) {
    const auto writer = Start(Edit("SLockStart", 1));
    // Closed last: closing a file takes away the locks that this process has on it.
    const sqlite::FileHandle locks = sqlite::OpenFile(site_.Path().toUtf8(), O_RDONLY);
    const auto reader = site_.Open();
    {
        const ReadScope reading(*reader);
        EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation WHERE SLockStart = False"), u"0");
        writer->GoOn();
        while (writer->IsRunning() && !IsWriterWaiting(locks)) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(writer->IsRunning()) << "it has not waited";
        EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation WHERE SLockStart = False"), u"0");
    }
    EXPECT_EQ(writer->Result(), 0);
    EXPECT_EQ(Flags(), u"10");
}

} // namespace velmora::engine::test
