#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/Statement.h"
#include "tests/engine/Child.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <random>
#include <set>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

// Runs SQL in a process that is then killed without closing the database.
void RunAndDie(const QString& path, const char* sql) {
    const int child = Fork([&] {
        const sqlite::Presence presence = sqlite::Presence::Join(path);
        sqlite::Connection store(QFile::encodeName(path), SQLITE_OPEN_READWRITE);
        store.Execute(sql);
        ::raise(SIGKILL);
        return 0;
    });
    EXPECT_EQ(Wait(child), -SIGKILL);
}

// The cache is too small for the change: a part of it is in the file before the transaction ends.
constexpr const char* halfAWrite = "PRAGMA cache_size = 5; BEGIN IMMEDIATE; UPDATE Reservation SET Name = 'half', "
                                   "Start = '2040-01-01 00:00:00'; DELETE FROM Note WHERE ID > 20";

void SmashMiddle(const QString& path, const char* table) {
    const std::vector<int> leaves = PagesOf(path, table, "leaf");
    OverwritePage(path, leaves[leaves.size() / 2]);
}

bool IsPart(const Rows& part, const Rows& whole) {
    return std::all_of(part.begin(), part.end(), [&](const auto& table) {
        const auto& [name, rows] = table;
        return rows.empty() || (whole.contains(name) &&
                                std::includes(whole.at(name).begin(), whole.at(name).end(), rows.begin(), rows.end()));
    });
}

} // namespace

TEST(Crash, AWriterThatIsKilledLeavesASoundFile) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 1500);
    const QByteArray sample = Contents(folder.Path());
    const Rows before = ReadRows(folder.Path());
    RunAndDie(folder.Path(), halfAWrite);
    EXPECT_NE(Contents(folder.Path()), sample);
    EXPECT_TRUE(folder.Names().contains(u"Velmora.MDB-journal"_s));
    EXPECT_FALSE(IsInUse(folder.Path())) << "its presence died with it";
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    EXPECT_TRUE(CheckDatabase(folder.Path(), ShippedOptions()).isSound);
    EXPECT_EQ(ReadRows(folder.Path()), before);
}

TEST(Crash, ARepairRollsTheJournalBackFirst) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 1500);
    Rows before = ReadRows(folder.Path());
    const std::vector<int> persons = PagesOf(folder.Path(), "Person", "leaf");
    RunAndDie(folder.Path(), halfAWrite);
    OverwritePage(folder.Path(), persons[2]);
    OverwritePage(folder.Path(), 1);
    const QByteArray broken = Contents(folder.Path());
    const QByteArray journal = Contents(folder.File(u"Velmora.MDB-journal"_s));
    const Schema other{.version = 1, .tables = {{.name = u"Other"_s, .columns = {{u"ID"_s, ColumnType::Identity}}}}};
    EXPECT_EQ(ErrorOf([&] { RepairDatabase(folder.Path(), other); }), NumberOf(EngineErrorNumber::Damaged));
    EXPECT_EQ(Contents(folder.Path()), broken) << "a repair that fails touches neither file nor journal";
    EXPECT_EQ(Contents(folder.File(u"Velmora.MDB-journal"_s)), journal);

    const RepairReport report = RepairDatabase(folder.Path());
    Rows after = ReadRows(folder.Path());
    EXPECT_TRUE(IsPart(after, before));
    EXPECT_LT(after.extract("Person").mapped().size(), before.extract("Person").mapped().size());
    EXPECT_EQ(after, before) << report.ToText().toStdString();
    EXPECT_EQ(Contents(report.keptAs), broken);
    EXPECT_EQ(Contents(report.keptAs + u"-journal"_s), journal);
    EXPECT_EQ(folder.Names().size(), 3) << folder.Names().join(u' ').toStdString();
}

TEST(Crash, ARepairReadsTheWriteAheadLog) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 1500);
    Execute(folder.Path(), "PRAGMA journal_mode = WAL");
    RunAndDie(folder.Path(),
              "UPDATE Reservation SET Name = 'logged'; INSERT INTO Asset (AssetID, Name) VALUES (900, 'New')");
    EXPECT_GT(Contents(folder.File(u"Velmora.MDB-wal"_s)).size(), 100000);
    const SampleFolder copy;
    for (const QString& name : {u"Velmora.MDB"_s, u"Velmora.MDB-wal"_s}) {
        SetContents(copy.File(name), Contents(folder.File(name)));
    }
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    Rows before = ReadRows(folder.Path());
    // Once with a broken page of another table, once with a broken first page.
    OverwritePage(copy.Path(), PagesOf(folder.Path(), "Person", "leaf")[2]);
    OverwritePage(copy.Path(), 1);
    const RepairReport report = RepairDatabase(copy.Path());
    Rows after = ReadRows(copy.Path());
    EXPECT_TRUE(IsPart(after, before));
    EXPECT_LT(after.extract("Person").mapped().size(), before.extract("Person").mapped().size());
    EXPECT_EQ(after, before) << report.ToText().toStdString();
    EXPECT_TRUE(CheckDatabase(copy.Path(), ShippedOptions()).isSound);
}

// Lets a child run until it is about to flush, rename, link or remove a file for the `count`-th time, and kills it
// there. Returns whether it came that far; otherwise it has ended by itself.
bool KillAtFileCall(const std::function<int()>& action, int count) {
    const int child = Fork([&] {
        ::ptrace(PTRACE_TRACEME);
        ::raise(SIGSTOP);
        return action();
    });
    int status = 0;
    ::waitpid(child, &status, 0);
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    const std::set<std::uint64_t> calls = {SYS_fsync, SYS_fdatasync, SYS_rename, SYS_renameat2, SYS_link, SYS_unlink};
    for (;;) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
        if (!WIFSTOPPED(status)) {
            return false;
        }
        __ptrace_syscall_info info{};
        ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof(info), &info);
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY && calls.contains(info.entry.nr) && --count == 0) {
            ::kill(child, SIGKILL);
            ::waitpid(child, &status, 0);
            return true;
        }
    }
}

// Whatever moment a repair is killed at, there is a file in place that is the damaged or the repaired one.
TEST(Crash, AKilledRepairLeavesTheOldFileOrTheNewOne) {
    const SampleFolder pattern;
    MakeSample(pattern.Path(), 3000);
    const Rows before = ReadRows(pattern.Path());
    const int assets = PagesOf(pattern.Path(), "Asset", "leaf").front();
    RunAndDie(pattern.Path(), halfAWrite);
    OverwritePage(pattern.Path(), assets);
    const QByteArray file = Contents(pattern.Path());
    const QByteArray journal = Contents(pattern.File(u"Velmora.MDB-journal"_s));
    bool killed = true;
    int round = 0;
    while (killed) {
        const SampleFolder folder;
        SetContents(folder.Path(), file);
        SetContents(folder.File(u"Velmora.MDB-journal"_s), journal);
        killed = KillAtFileCall([&] { return ErrorOf([&] { RepairDatabase(folder.Path()); }); }, ++round);
        ASSERT_TRUE(folder.Names().contains(u"Velmora.MDB"_s));
        EXPECT_FALSE(IsInUse(folder.Path()));
        if (OpeningResult(folder.Path()) != 0) {
            EXPECT_EQ(ErrorOf([&] { RepairDatabase(folder.Path()); }), 0);
        }
        EXPECT_EQ(OpeningResult(folder.Path()), 0);
        const Rows after = ReadRows(folder.Path());
        EXPECT_TRUE(IsPart(after, before));
        EXPECT_EQ(after.at("Reservation"), before.at("Reservation"));
        EXPECT_EQ(after.at("Note"), before.at("Note"));
    }
    EXPECT_GT(round, 5) << "the exchange of the files takes several steps";
}

TEST(Crash, AFullDiskLeavesTheOldFile) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 3000);
    SmashMiddle(folder.Path(), "Reservation");
    const QByteArray broken = Contents(folder.Path());
    for (const double share : {0.05, 0.5, 0.95}) {
        const auto most = static_cast<qint64>(static_cast<double>(broken.size()) * share);
        EXPECT_TRUE(ReportsAFullDisk(most, [&] { RepairDatabase(folder.Path()); }));
        EXPECT_EQ(Contents(folder.Path()), broken);
        EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
    }
}

TEST(Crash, ARepairWaitsForItsTurn) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 100);
    OverwritePage(folder.Path(), 1);
    const QByteArray broken = Contents(folder.Path());
    {
        const sqlite::Presence other = sqlite::Presence::Join(folder.Path());
        EXPECT_TRUE(IsInUse(folder.Path()));
        EXPECT_EQ(ErrorOf([&] { RepairDatabase(folder.Path()); }), NumberOf(EngineErrorNumber::RecordLocked));
        EXPECT_EQ(Contents(folder.Path()), broken);
    }
    const RepairReport first = RepairDatabase(folder.Path());
    const RepairReport second = RepairDatabase(folder.Path());
    EXPECT_EQ(second.keptAs, first.keptAs + u"-2"_s) << "an earlier one is never replaced";
    EXPECT_EQ(Contents(first.keptAs), broken);
    EXPECT_EQ(QFile(folder.Path()).permissions(), QFile(first.keptAs).permissions());
}

// Pages and sectors of many small databases are overwritten at random.
TEST(Crash, NoDamageBreaksTheRepair) {
    const SampleFolder pattern;
    MakeSample(pattern.Path(), 250);
    Execute(pattern.Path(),
            "DELETE FROM Reservation WHERE ID BETWEEN 50 AND 90; DELETE FROM Person WHERE Area = 'Area3'");
    const Rows before = ReadRows(pattern.Path());
    const QByteArray sample = Contents(pattern.Path());
    const SampleFolder folder;
    std::mt19937 random(2026);
    constexpr int rounds = 100;
    int repaired = 0;
    for (int round = 0; round < rounds; ++round) {
        QByteArray broken = sample;
        const int hits = 1 + static_cast<int>(random() % 4);
        for (int hit = 0; hit < hits; ++hit) {
            const int size = random() % 2 == 0 ? pageSize : 512;
            const qsizetype offset = static_cast<qsizetype>(random() % (static_cast<unsigned>(sample.size()) /
                                                                        static_cast<unsigned>(size))) *
                                     size;
            const bool isZero = random() % 3 == 0;
            for (int index = 0; index < size; ++index) {
                broken[offset + index] = isZero ? '\0' : static_cast<char>(random());
            }
        }
        if (random() % 8 == 0) {
            broken.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(broken.size())));
        }
        SetContents(folder.Path(), broken);
        const int opening = OpeningResult(folder.Path());
        EXPECT_TRUE(opening == 0 || opening == NumberOf(EngineErrorNumber::Damaged)) << round << ": " << opening;
        try {
            const RepairReport report = RepairDatabase(folder.Path());
            ++repaired;
            EXPECT_EQ(OpeningResult(folder.Path()), 0) << round;
            Rows after = ReadRows(folder.Path());
            after.erase("sqlite_sequence"); // its numbers follow those of the rows
            EXPECT_TRUE(IsPart(after, before)) << round << '\n' << report.ToText().toStdString();
            EXPECT_TRUE(QFile::remove(report.keptAs));
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Number(), NumberOf(EngineErrorNumber::Damaged)) << round << ": " << error.what();
            EXPECT_EQ(Contents(folder.Path()), broken) << round;
        }
        EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s}) << round;
    }
    EXPECT_GT(repaired, rounds * 9 / 10);
}

} // namespace velmora::engine::test
