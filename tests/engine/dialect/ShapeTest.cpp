#include "engine/dialect/Compiler.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

TextShape ShapeOf(const QString& text) {
    TextShape shape;
    ScanShape(text, shape);
    return shape;
}

TEST(ShapeTest, KeyTellsKindsApartButNotValues) {
    const auto key = [](const char* text) { return ShapeOf(QString::fromLatin1(text)).key; };
    EXPECT_EQ(key("x = 1 And y = 'a'"), key("x = 22 And y = \"b'c\""));
    EXPECT_NE(key("x = 1"), key("x = 1.0"));
    EXPECT_NE(key("x = 1"), key("x = '1'"));
    EXPECT_NE(key("x = '1/1/2026'"), key("x = #1/1/2026#"));
    EXPECT_NE(key("x1 = 1"), key("x2 = 1"));
    EXPECT_NE(key("[x 1]"), key("[x 2]"));
}

TEST(ShapeTest, LeavesBadTextsToTheCompiler) {
    for (const char* text :
         {"'open", "\"open", "#1/1/2026", "[open", "#13/1/2026#", "#2/30/2026#", "#1/1/26#", "#2026-01-01#",
          "#1/1/2026 25:00#", "#1/1/2026 13:00 PM#", "##", "12abc", "1e999", "a\001b"}) {
        EXPECT_FALSE(ShapeOf(QString::fromLatin1(text)).recognised) << text;
    }
}

TEST(ShapeTest, ReusesItsStorage) {
    TextShape shape;
    ScanShape(u"Select * from Asset where Name = \"a long name\" and AssetID = 7", shape);
    const QString key = shape.key;
    const Value name = shape.literals[0];
    ScanShape(u"x = 'y'", shape);
    EXPECT_EQ(shape.literals, std::vector<Value>{QStringLiteral("y")});
    EXPECT_EQ(name.ToText(), u"a long name");
    EXPECT_EQ(key, ShapeOf(QStringLiteral("Select * from Asset where Name = \"b\" and AssetID = 8")).key);
}

} // namespace
} // namespace velmora::engine::dialect
