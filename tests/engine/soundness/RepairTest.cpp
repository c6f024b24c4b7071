#include "engine/Repair.h"
#include "tests/engine/soundness/Damages.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

constexpr int damaged = static_cast<int>(EngineErrorNumber::Damaged);

DateTime Afternoon() {
    return *MakeDateTime({2026, 3, 7, 14, 15, 9});
}

RepairReport Repair(const QString& path) {
    return RepairDatabase(path, ShippedSchema(), Afternoon());
}

// Saved rows are rows of the original, and the report counts what is there and what is not.
void ExpectTrueReport(const RepairReport& report, const Rows& before, const Rows& after,
                      const std::vector<const char*>& losers) {
    for (const TableRepair& table : report.tables) {
        const QByteArray name = table.table.toUtf8();
        const std::set<QByteArray> original = before.contains(name) ? before.at(name) : std::set<QByteArray>();
        const std::set<QByteArray>& saved = after.at(name);
        const auto missing = static_cast<qint64>(original.size()) - static_cast<qint64>(saved.size());
        EXPECT_TRUE(std::includes(original.begin(), original.end(), saved.begin(), saved.end())) << name.toStdString();
        EXPECT_EQ(table.rowsSaved, static_cast<qint64>(saved.size())) << name.toStdString();
        EXPECT_TRUE(table.mayHaveLostMore ? table.rowsLost <= missing : table.rowsLost == missing)
            << report.ToText().toStdString();
        const bool mayLose = std::find(losers.begin(), losers.end(), name) != losers.end();
        EXPECT_TRUE(missing == 0 || mayLose) << name.toStdString() << " lost " << missing << " rows\n"
                                             << report.ToText().toStdString();
    }
}

class RepairOf : public testing::TestWithParam<Damage> {
protected:
    static void SetUpTestSuite() {
        const SampleFolder folder;
        MakeSample(folder.Path(), 1500);
        sample_ = new QByteArray(Contents(folder.Path()));
    }
    static void TearDownTestSuite() { delete sample_; }
    static QByteArray* sample_;
};
QByteArray* RepairOf::sample_ = nullptr;

} // namespace

TEST_P(RepairOf, SavesWhatCanBeRead) {
    const Damage& damage = GetParam();
    const SampleFolder folder;
    SetContents(folder.Path(), *sample_);
    for (const char* sql : damage.before) {
        Execute(folder.Path(), sql);
    }
    const Rows before = ReadRows(folder.Path());
    damage.apply(folder.Path());
    const QByteArray broken = Contents(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), damage.opening);
    EXPECT_EQ(CheckDatabase(folder.Path(), ShippedOptions()).isSound, damage.check == 0);
    EXPECT_EQ(Contents(folder.Path()), broken) << "opening and checking change nothing";
    if (damage.repair != 0) {
        EXPECT_EQ(ErrorOf([&] { Repair(folder.Path()); }), damage.repair);
        EXPECT_EQ(Contents(folder.Path()), broken);
        EXPECT_EQ(folder.Names(), QStringList{u"Velmora.MDB"_s});
        return;
    }
    const RepairReport report = Repair(folder.Path());
    EXPECT_EQ(OpeningResult(folder.Path()), 0);
    EXPECT_TRUE(CheckDatabase(folder.Path(), ShippedOptions()).isSound);
    ExpectTrueReport(report, before, ReadRows(folder.Path()), damage.losers);
    EXPECT_EQ(folder.Names(), QStringList({u"Velmora.MDB"_s, u"Velmora.MDB.damaged-20260307-141509"_s}));
    EXPECT_EQ(Contents(report.keptAs), broken);
}

INSTANTIATE_TEST_SUITE_P(Repair, RepairOf, testing::ValuesIn(Damages()),
                         [](const auto& test) { return std::string(test.param.name); });
} // namespace velmora::engine::test
