#include "engine/sqlite/Presence.h"
#include "engine/EngineError.h"
#include "engine/sqlite/Statement.h"
#include "tests/engine/soundness/SampleDatabase.h"

#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

using sqlite::Presence;

constexpr int recordLocked = static_cast<int>(EngineErrorNumber::RecordLocked);

// A child process that has done `action` and keeps what it returned until it is ended.
class Holder {
public:
    template <typename Action>
    explicit Holder(Action action) {
        int ready[2];
        EXPECT_EQ(::pipe(ready), 0);
        child_ = Fork([&] {
            const auto held = action();
            static_cast<void>(::write(ready[1], "x", 1));
            ::pause();
            return 0;
        });
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~Holder() { Kill(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    void Kill() {
        if (child_ > 0) {
            ::kill(std::exchange(child_, 0), SIGKILL);
            ::wait(nullptr);
        }
    }

private:
    int child_ = 0;
};

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
        EXPECT_EQ(ErrorOf([&] { Presence::Join(folder.Path()); }), recordLocked);
    }
    EXPECT_TRUE(Presence::Join(folder.Path()).IsLocked());
}

TEST(Presence, CountsOtherProcessesUntilTheyAreKilled) {
    const SampleFolder folder;
    SetContents(folder.Path(), "x");
    Holder other([&] { return Presence::Join(folder.Path()); });
    EXPECT_TRUE(IsInUse(folder.Path()));
    EXPECT_FALSE(Presence::TryExclusive(folder.Path()));
    EXPECT_TRUE(Presence::Join(folder.Path()).IsLocked());
    other.Kill();
    EXPECT_FALSE(IsInUse(folder.Path()));
}

TEST(Presence, SeesOtherProgramsByTheStoresOwnLocks) {
    const SampleFolder folder;
    MakeSample(folder.Path(), 10);
    Holder other([&] {
        sqlite::Connection store(QFile::encodeName(folder.Path()), SQLITE_OPEN_READWRITE);
        store.Execute("BEGIN; SELECT count(*) FROM Asset");
        return store;
    });
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
    for (int child = 0; child < 4; ++child) {
        children.push_back(Fork([&] {
            for (int round = 0; round < 300; ++round) {
                if (!Presence::Join(folder.Path()).IsLocked()) {
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
