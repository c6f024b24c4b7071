#include "tests/engine/TestSite.h"

#include <QProcess>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

// A process ends with the low byte of the error's number.
constexpr int ExitOf(EngineErrorNumber number) {
    return static_cast<int>(number) & 0xff;
}

// Another copy of the program at work on the site's file.
class Peer {
public:
    Peer(const TestSite& site, const QStringList& task) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral(VELMORA_ENGINE_PEER), QStringList(site.Path()) + task);
        EXPECT_TRUE(process_.waitForReadyRead(20'000)) << qPrintable(process_.errorString());
    }
    ~Peer() {
        process_.kill();
        process_.waitForFinished();
    }

    void GoOn() { process_.write("\n"); }
    bool EndsWithin(int milliseconds) { return process_.waitForFinished(milliseconds); }
    // 0, or what ExitOf gives.
    int Result() {
        EXPECT_TRUE(process_.waitForFinished(120'000));
        EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
        return process_.exitCode();
    }
    void Kill() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
};

class Sharing : public ::testing::Test {
protected:
    Sharing() { site_.Run("INSERT INTO Reservation (ID, Attendees, SLockStart, TLockStart) VALUES (1, 0, 0, 0)"); }

    QString Flags() const {
        return site_.Stored("SELECT ifnull(max(SLockStart || TLockStart), 'gone') FROM Reservation");
    }

    TestSite site_;
};

} // namespace

// Two copies have read the record; both then do what they have in mind, one behind the other.
TEST_F(Sharing, TwoCopiesChangeOneRecord) {
    struct Case {
        QStringList first;
        QStringList second;
        int secondResult;
        QStringView flags;
    };
    const QStringList tickStart = {u"edit"_s, u"SLockStart"_s, u"1"_s};
    const QStringList tickPhone = {u"edit"_s, u"TLockStart"_s, u"1"_s};
    const Case cases[] = {
        {tickStart, tickPhone, 0, u"11"},
        {tickStart, tickStart, ExitOf(EngineErrorNumber::RecordChanged), u"10"},
        {{u"delete"_s}, tickPhone, ExitOf(EngineErrorNumber::RecordDeleted), u"gone"},
        {{u"delete"_s}, {u"delete"_s}, ExitOf(EngineErrorNumber::RecordDeleted), u"gone"},
        {tickStart, {u"delete"_s}, 0, u"gone"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(qPrintable(each.first.join(u' ') + u" then "_s + each.second.join(u' ')));
        site_.Run("DELETE FROM Reservation; INSERT INTO Reservation (ID, SLockStart, TLockStart) VALUES (1, 0, 0)");
        Peer first(site_, each.first);
        Peer second(site_, each.second);
        first.GoOn();
        EXPECT_EQ(first.Result(), 0);
        second.GoOn();
        EXPECT_EQ(second.Result(), each.secondResult);
        EXPECT_EQ(Flags(), each.flags);
    }
}

TEST_F(Sharing, EightWritersLoseNoUpdate) {
    constexpr int writers = 8;
    constexpr int times = 100;
    std::vector<std::unique_ptr<Peer>> peers;
    for (int i = 0; i < writers; ++i) {
        peers.push_back(std::make_unique<Peer>(site_, QStringList{u"count"_s, QString::number(times)}));
    }
    for (const auto& peer : peers) {
        peer->GoOn();
    }
    for (const auto& peer : peers) {
        EXPECT_EQ(peer->Result(), 0);
    }
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation"), QString::number(writers * times));
}

TEST_F(Sharing, KilledWritersLeaveASoundFile) {
    const auto reader = site_.Open();
    const auto count = [&] { return reader->OpenRecordset(u"SELECT Count(*) AS N FROM Note")->FieldAt(0).ToInteger(); };
    for (int round = 0; round < 8; ++round) {
        const qint64 enough = count() + 6 + round;
        Peer writer(site_, {u"hammer"_s});
        while (count() < enough) {
            QThread::yieldCurrentThread();
        }
        writer.Kill();
        const auto database = site_.Open();
        const auto notes = database->OpenRecordset(u"Note");
        if (!notes->EndOfFile()) {
            notes->MoveLast();
        }
        EXPECT_EQ(notes->RecordCount() % 2, 0) << "half a transaction was kept";
    }
    EXPECT_EQ(site_.Stored("PRAGMA integrity_check"), u"ok");
}

// A reader of long breath: the change waits for it at its end, then gives up, takes itself back and can be repeated.
TEST_F(Sharing, AReaderInTheWayIsWaitedForAndThenReported) {
    const auto database = site_.Open({.busyMilliseconds = 200});
    const auto row = Reservation(*database, 1);
    Peer reader(site_, {u"hold-read"_s});
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

TEST_F(Sharing, ShortLocksAreWaitedFor) {
    const auto database = site_.Open({.busyMilliseconds = 10'000});
    const auto row = Reservation(*database, 1);
    row->Edit();
    row->Set("Attendees", 5);
    Peer reader(site_, {u"hold-read"_s, u"300"_s});
    row->Update();
    EXPECT_EQ(site_.Stored("SELECT Attendees FROM Reservation"), u"5");
}

// Reads inside a scope, inner scopes included, see one state; other users' changes wait until the outermost ends.
TEST_F(Sharing, AReadScopeKeepsItsStateUntilTheOutermostEnds) {
    constexpr QStringView attendees = u"SELECT Attendees FROM Reservation";
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
    EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation"), u"0");
    EXPECT_EQ(reader->Execute(u"UPDATE Reservation SET Attendees = Attendees + 1"), 1);
    EXPECT_EQ(writer->Execute(u"UPDATE Reservation SET Attendees = Attendees + 1"), 1);
    EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation"), u"2");
    {
        Transaction changes(*reader);
        reader->Execute(u"UPDATE Reservation SET Attendees = 9");
        changes.Commit();
    }
    EXPECT_EQ(Shown(*writer, u"SELECT Attendees FROM Reservation"), u"9");
}

TEST_F(Sharing, AnotherProcessWaitsUntilAReadScopeEnds) {
    const auto reader = site_.Open();
    Peer writer(site_, {u"edit"_s, u"SLockStart"_s, u"1"_s});
    {
        const ReadScope reading(*reader);
        EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation WHERE SLockStart = False"), u"0");
        writer.GoOn();
        EXPECT_FALSE(writer.EndsWithin(200));
        EXPECT_EQ(Shown(*reader, u"SELECT Attendees FROM Reservation WHERE SLockStart = False"), u"0");
    }
    EXPECT_EQ(writer.Result(), 0);
    EXPECT_EQ(Flags(), u"10");
}

} // namespace velmora::engine::test
