#include "engine/dialect/Compiler.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

TextShape ShapeOf(const QString& text) {
    TextShape shape;
    ScanShape(text, shape);
    return shape;
}

QString Literals(const TextShape& shape) {
    QStringList list;
    for (const Value& literal : shape.literals) {
        list += literal.IsText()   ? u'"' + literal.ToText() + u'"'
                : literal.IsReal() ? literal.ToText() + u'r'
                                   : literal.ToText();
    }
    return list.join(u' ');
}

TEST(ShapeTest, TakesOutLiteralsOfEveryKind) {
    const struct {
        QString text;
        const char* literals;
    } cases[] = {
        {QStringLiteral("Select * from Asset where AssetID = 42"), "42"},
        {QStringLiteral("a=1.5 b=.25 c=1e3 d=10-2"), "1.5r 0.25r 1000r 10 2"},
        {QStringLiteral("'it''s' \"a \"\"b\"\"\" '' \"'\""), "\"it's\" \"a \"b\"\" \"\" \"'\""},
        {QStringLiteral("#03/07/2026 # # 3 / 7 /2026 2:15:09 pm#"), "2026-03-07 00:00:00 2026-03-07 14:15:09"},
        {QStringLiteral("#1/2/2026 12:00 AM# #1/2/2026 12:30PM# #2/29/2024 23:59#"),
         "2026-01-02 00:00:00 2026-01-02 12:30:00 2024-02-29 23:59:00"},
        {QStringLiteral("Area2 = x.Area3 [a 1 'b'] T_9 \u00e9\u00e8"
                        "5 x]"),
         ""},
        {QStringLiteral("99999999999999999999"), "1e+20r"},
    };
    for (const auto& one : cases) {
        const TextShape shape = ShapeOf(one.text);
        EXPECT_TRUE(shape.recognised) << one.text.toStdString();
        EXPECT_EQ(Literals(shape).toStdString(), one.literals) << one.text.toStdString();
    }
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
    for (const char* text : {"'open", "\"open", "#1/1/2026", "[open", "#13/1/2026#", "#2/30/2026#", "#1/1/26#",
                             "#2026-01-01#", "#1/1/2026 25:00#", "#1/1/2026 13:00 PM#", "##", "12abc", "1e999",
                             "a\x01"
                             "b"}) {
        EXPECT_FALSE(ShapeOf(QString::fromLatin1(text)).recognised) << text;
    }
}

TEST(ShapeTest, ReusesItsStorage) {
    TextShape shape;
    ScanShape(u"Select * from Asset where Name = \"a long name\" and AssetID = 7", shape);
    const QString key = shape.key;
    const Value name = shape.literals[0];
    ScanShape(u"x = 'y'", shape);
    EXPECT_EQ(Literals(shape), u"\"y\"");
    EXPECT_EQ(name.ToText(), u"a long name");
    EXPECT_EQ(key, ShapeOf(QStringLiteral("Select * from Asset where Name = \"b\" and AssetID = 8")).key);
}

} // namespace
} // namespace velmora::engine::dialect
