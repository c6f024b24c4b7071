#include "tests/engine/dialect/Corpus.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace velmora::engine::test {
namespace {

// A text that grows around its middle: `before` and `behind` repeated.
struct Nest {
    const char* name;
    QString start;
    QString before;
    QString middle;
    QString behind;
    QString end;
    int deepest; // a depth that must still work
};

std::vector<Nest> Nests() {
    const auto condition = QStringLiteral("SELECT Name FROM Asset WHERE ");
    const auto value = QStringLiteral("SELECT 1 FROM Asset WHERE AssetID = ");
    const auto s = [](const char* text) { return QString::fromLatin1(text); };
    return {
        {"parentheses", value, s("("), s("1"), s(")"), {}, 80},
        {"signs", value, s("- "), s("1"), {}, {}, 40},
        {"not", condition, s("Not "), s("Location"), {}, {}, 60},
        {"sum to the left", value, s("1 + "), s("1"), {}, {}, 150},
        {"sum to the right", value, s("1 + ("), s("1"), s(")"), {}, 25},
        {"joined texts", condition, s("Name & "), s("Name"), {}, s(" = 'x'"), 150},
        {"alternatives", condition, s("AssetID = 1 Or "), s("Location"), {}, {}, 2000},
        {"alternatives in parentheses", condition, s("(AssetID = 1 Or Location And "), s("Location"), s(")"), {}, 16},
        {"list", condition + s("AssetID In ("), s("1, "), s("1"), {}, s(")"), 2000},
        {"calls", condition, s("Left(Name & "), s("'x'"), s(", 3)"), s(" = 'y'"), 6},
        {"choices", value, s("IIf(Location, 1, "), s("2"), s(")"), {}, 40},
        {"choices inside", value, s("IIf(Location, "), s("2"), s(", 1)"), {}, 9},
        {"subqueries", value, s("(SELECT Max(AssetID) FROM Asset WHERE AssetID < "), s("9"), s(")"), {}, 6},
        {"exists", condition, s("Exists (SELECT * FROM Asset WHERE "), s("Location"), s(")"), {}, 6},
        {"sources", s("SELECT * FROM "), s("(SELECT * FROM "), s("Asset"), s(")"), {}, 6},
        {"comparisons", condition, s("1 = "), s("1"), {}, {}, 60},
        {"unknown sums", value, s("p + "), s("1"), {}, {}, 10},
        {"between", condition, s("1 Between 0 And "), s("1"), {}, s(" Or Location"), 1},
        {"like", s("SELECT "), s("'a' Like "), s("Name"), {}, s(" FROM Asset"), 8},
        {"unions", {}, s("SELECT Name FROM Asset UNION "), s("SELECT Name FROM Asset"), {}, {}, 40},
    };
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
