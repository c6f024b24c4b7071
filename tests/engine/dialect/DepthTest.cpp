#include "engine/EngineError.h"
#include "engine/dialect/Compiler.h"
#include "tests/engine/dialect/TestStore.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
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
        {"joins", s("SELECT Count(*) FROM "), s("(Person LEFT JOIN "), s("Asset"), s(" ON 1 = 1)"), {}, 0},
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

// Every depth either compiles into what the store takes, or is refused with a sentence: neither this program's stack
// nor the store's parser overflows.
TEST(DepthTest, RefusesWhatTheStoreCouldNotTake) {
    TestStore store;
    for (const Nest& nest : Nests()) {
        for (int depth = 0; depth < 120; depth += depth < 20 ? 1 : 5) {
            SCOPED_TRACE(std::string(nest.name) + " " + std::to_string(depth));
            try {
                const CompiledStatement compiled = Compile(TextOf(nest, depth), store, Purpose::Read);
                EXPECT_NO_THROW(store.Prepare(compiled.sql));
            } catch (const EngineError& error) {
                EXPECT_EQ(error.Kind(), EngineErrorNumber::Syntax) << error.what();
                EXPECT_GT(depth, nest.deepest) << error.what();
            }
        }
        if (nest.deepest > 100) {
            EXPECT_NO_THROW(store.Prepare(Compile(TextOf(nest, nest.deepest), store, Purpose::Read).sql)) << nest.name;
        }
    }
}

TEST(DepthTest, SurvivesHostileTexts) {
    TestStore store;
    constexpr int depth = 50000;
    for (const Nest& nest : Nests()) {
        SCOPED_TRACE(nest.name);
        try {
            Compile(TextOf(nest, depth), store, Purpose::Read);
        } catch (const EngineError& error) {
            EXPECT_EQ(error.Kind(), EngineErrorNumber::Syntax) << nest.name;
        }
    }
}

} // namespace
} // namespace velmora::engine::dialect
