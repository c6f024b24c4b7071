#include "engine/sqlite/Presence.h"
#include "engine/EngineError.h"
#include "engine/sqlite/Statement.h"
#include "tests/engine/Child.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <QFile>

#include <gtest/gtest.h>

#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

using sqlite::Presence;

constexpr int recordLocked = static_cast<int>(EngineErrorNumber::RecordLocked);

// Joins; waits for its turn while others come and go. False when it finds a repair where there is none: when it has not
// even waited for a while.
bool JoinsInTurn(const QString& path) {
    for (;;) {
        const auto start = std::chrono::steady_clock::now();
        try {
            return Presence::Join(path).IsLocked();
        } catch (const EngineError&) {
            if (std::chrono::steady_clock::now() - start < 100ms) {
                return false;
            }
        }
    }
}

} // namespace

TEST(Presence, SharedAmongCopiesExclusiveForOne) {
    const SampleFolder folder;
    SetContents(folder.Path(), "x");
    {
        const Presence one = Presence::Join(folder.Path());
        const Presence two = Presence::Join(folder.Path());
        EXPECT_TRUE(one.IsLocked() && two.IsLocked());
        EXPECT_FALSE(Presence::TryExclusive(folder.Path())) << "two openings in this very process";
    }
    EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s}) << "the last one out removes the side file";
    {
        const std::optional<Presence> alone = Presence::TryExclusive(folder.Path());
        ASSERT_TRUE(alone);
        EXPECT_FALSE(Presence::TryExclusive(folder.Path()));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(ErrorOf([&] { Presence::Join(folder.Path()); }), recordLocked);
        EXPECT_GE(std::chrono::steady_clock::now() - start, 100ms) << "it might have been a copy that leaves";
    }
    EXPECT_TRUE(Presence::Join(folder.Path()).IsLocked());
}

TEST(Presence, CountsOtherProcessesUntilTheyAreKilled) {
    const SampleFolder folder;
    SetContents(folder.Path(), "x");
    Child other([&](const Child& self) {
        const Presence presence = Presence::Join(folder.Path());
        self.StandStill();
    });
    other.AwaitReady();
    EXPECT_TRUE(IsInUse(folder.Path()));
    EXPECT_FALSE(Presence::TryExclusive(folder.Path()));
    EXPECT_TRUE(Presence::Join(folder.Path()).IsLocked());
    other.Kill();
    EXPECT_FALSE(IsInUse(folder.Path()));
}

TEST(Presence, SeesOtherProgramsByTheStoresOwnLocks) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 10);
    Child other([&](const Child& self) {
        sqlite::Connection store(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
        store.Execute("BEGIN; SELECT count(*) FROM Asset");
        self.StandStill();
    });
    other.AwaitReady();
    const QByteArray before = Contents(folder.Path());
    EXPECT_TRUE(IsInUse(folder.Path()));
    EXPECT_EQ(ErrorOf([&] { RepairDatabase(folder.Path()); }), recordLocked);
    EXPECT_EQ(Contents(folder.Path()), before);
    EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
    other.Kill();
    EXPECT_FALSE(IsInUse(folder.Path()));
}

// Copies that come and go all the time never take each other for a repair.
TEST(Presence, ComingAndGoingDisturbsNobody) {
    const SampleFolder folder;
    SetContents(folder.Path(), "x");
    std::vector<int> children;
    children.reserve(4);
    for (int child = 0; child < 4; ++child) {
        children.push_back(Fork([&] {
            for (int round = 0; round < 300; ++round) {
                if (!JoinsInTurn(folder.Path())) {
                    return 1;
                }
            }
            return 0;
        }));
    }
    for (const int child : children) {
        EXPECT_EQ(Wait(child), 0);
    }
}

TEST(Presence, DoesWithoutALockWhereNoSideFileCanBe) {
    EXPECT_FALSE(Presence::Join(u"/proc/version"_s).IsLocked());
    EXPECT_FALSE(Presence::TryExclusive(u"/proc/version"_s));
}

TEST(Presence, KnowsAFileByWhateverName) {
    const SampleFolder folder;
    SetContents(folder.Path(), "x");
    ASSERT_TRUE(QFile::link(folder.Path(), folder.File(u"Link"_s)));
    const Presence presence = Presence::Join(folder.File(u"Link"_s));
    EXPECT_FALSE(Presence::TryExclusive(folder.Path()));
}

} // namespace velmora::engine::test
