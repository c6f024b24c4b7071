#include "tests/engine/dialect/Corpus.h"
#include "tests/support/Folders.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace velmora::engine::test {
namespace {

// A text that grows around its middle: `before` and `behind` repeated.
struct Nest {
    std::string name;
    QString start;
    QString before;
    QString middle;
    QString behind;
    QString end;
    int deepest; // a depth that must still work
};

std::vector<Nest> Nests() {
    std::vector<Nest> nests;
    for (const QStringList& one : TestRows(QStringLiteral("engine/dialect/depth.txt"))) {
        nests.push_back({one[0].toStdString(), one[1], one[2], one[3], one[4], one[5], one.at(6).toInt()});
    }
    return nests;
}

QString TextOf(const Nest& nest, int depth) {
    return nest.start + nest.before.repeated(depth) + nest.middle + nest.behind.repeated(depth) + nest.end;
}

class DepthTest : public testing::TestWithParam<TestedStore> {
protected:
    // What becomes of the text: the number of its error, or nothing.
    std::optional<EngineErrorNumber> Refusal(const Nest& nest, int depth) {
        try {
            const auto query = database_->CreateQueryDef(TextOf(nest, depth));
            for (const auto& parameter : query->Parameters()) {
                query->SetParameter(parameter.name, Value(1));
            }
            query->OpenRecordset();
        } catch (const EngineError& error) {
            constexpr QStringView sentences[] = {u"nests too deeply", u"is too long", u"names at most", u"more than"};
            EXPECT_TRUE(std::any_of(std::begin(sentences), std::end(sentences),
                                    [&](QStringView words) { return error.Description().contains(words); }))
                << nest.name << ' ' << depth << ": " << error.what();
            return error.Kind();
        }
        return std::nullopt;
    }

    QTemporaryDir folder_;
    std::unique_ptr<Database> database_ = GetParam().open(folder_.path());
};

// Sensible depths run. Deeper ones run or are refused as too deep, by the dialect or by the store, and never as
// anything else.
TEST_P(DepthTest, RunsSensibleDepthsAndRefusesDeeperOnesAsTooDeep) {
    for (const Nest& nest : Nests()) {
        for (const int depth : {0, 1, 2, 3, 5, 8, 12, 20, 40, 80, 120, 400}) {
            const auto refusal = Refusal(nest, depth);
            EXPECT_TRUE(!refusal || refusal == EngineErrorNumber::Syntax) << nest.name << ' ' << depth;
            EXPECT_TRUE(!refusal || depth > nest.deepest) << nest.name << ' ' << depth;
        }
        EXPECT_EQ(Refusal(nest, nest.deepest), std::nullopt) << nest.name;
    }
}

TEST_P(DepthTest, RefusesHostileTexts) {
    constexpr int depth = 50000;
    for (const Nest& nest : Nests()) {
        EXPECT_EQ(Refusal(nest, depth), EngineErrorNumber::Syntax) << nest.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, DepthTest, testing::ValuesIn(testedStores),
                         [](const auto& store) { return std::string(store.param.name); });

} // namespace
} // namespace velmora::engine::test
