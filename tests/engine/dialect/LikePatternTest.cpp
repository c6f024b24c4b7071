#include "engine/dialect/LikePattern.h"
#include "engine/EngineError.h"
#include "engine/dialect/Utf8.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

TEST(LikePatternTest, Matches) {
    const struct {
        const char* pattern;
        const char* fits; // separated by blanks; "~" is the empty text
        const char* differs;
    } cases[] = {
        {"a*", "a A abc", "~ ba"},
        {"*", "~ a abc", ""},
        {"*b", "b ab aBb", "~ ba bba"},
        {"*a*b*", "ab xaxbx aabb", "ba a b ~"},
        {"?", "a \xC3\xA4 \xF0\x9F\x98\x80", "~ ab"},
        {"??*", "ab abc", "a ~"},
        {"#?#", "1a2 000", "a12 1a 1ab"},
        {"[abc]x", "ax Bx", "dx x"},
        {"[a-c]", "a B c", "d ~"},
        {"[!a-c]", "d 1 -", "a C ~"},
        {"[a-cx-z1]", "b Y 1", "d 2"},
        {"[*]", "*", "a ~ **"},
        {"[?][#]", "?#", "a1"},
        {"[[]x]", "[x]", "x] [x"},
        {"]", "]", "["},
        {"[-]", "-", "a ~"},
        {"[a-]", "a -", "b"},
        {"[!]", "!", "a"},
        {"[]a", "a", "]a"},
        {"100%_x", "100%_X", "100aax 100"},
        {"s\xC3\xBC"
         "d*",
         "S\xC3\x9C"
         "D s\xC3\x9C"
         "d-Fl",
         "sud"},
        {"\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89", "ete"},
        {"\xF0\x90\x90\x80", "\xF0\x90\x90\xA8", "\xF0\x90\x90\x81"}, // letters beyond the first 65,536
        {"k", "K \xE2\x84\xAA", "c"},                                 // the Kelvin sign is a k
        {"[\xC3\xA0-\xC3\xA9]", "\xC3\x89 \xC3\xA4", "\xC3\xBC e"},
    };
    for (const auto& one : cases) {
        const LikePattern pattern(one.pattern);
        for (const auto& [texts, expected] : {std::pair(one.fits, true), std::pair(one.differs, false)}) {
            for (const QString& text : QString::fromUtf8(texts).split(u' ', Qt::SkipEmptyParts)) {
                const QByteArray bytes = text == u"~" ? QByteArray() : text.toUtf8();
                EXPECT_EQ(pattern.Matches({bytes.constData(), static_cast<size_t>(bytes.size())}), expected)
                    << one.pattern << " : " << text.toStdString();
            }
        }
    }
}

TEST(LikePatternTest, RefusesAListWithoutItsEnd) {
    for (const char* pattern : {"[", "a[b", "[a]b[", "[["}) {
        EXPECT_THROW(LikePattern{pattern}, EngineError) << pattern;
        EXPECT_GE(UnclosedList(QString::fromLatin1(pattern)), 0) << pattern;
    }
    EXPECT_EQ(UnclosedList(u"[a][[]]"), -1);
}

// The range never leaves out a text that matches, and has none where letters beyond ASCII could stand for a letter.
TEST(LikePatternTest, RangeForTheIndex) {
    const struct {
        const char* pattern;
        const char* range; // from..below
    } cases[] = {
        {"Conf*", "conf..cong"},
        {"A*", "a..b"},
        {"a1 -x?", "a1 -x..a1 -y"},
        {"Bo[ab]*", "bo..bp"},
        {"plain", "plain..plaio"},
        {"Bak*", "ba..bb"},
        {"Desk#", "de..df"},
        {"*a", ""},
        {"Kiosk*", ""},
        {"s*", ""},
        {"\xC3\xBC*", ""},
        {"Z_", "z_..z`"},
        {"", ""},
        {"[[]a", ""},
        {"a\xC3\xA4*", "a..b"},
    };
    for (const auto& one : cases) {
        const auto range = RangeOfLike(QString::fromUtf8(one.pattern));
        const QString shown = range ? range->from + QStringLiteral("..") + range->below : QString();
        EXPECT_EQ(shown.toStdString(), one.range) << one.pattern;
    }
}

// The range leaves out k and s because these are all the letters beyond ASCII that fold into it.
TEST(LikePatternTest, OnlyTwoLettersFoldIntoAscii) {
    for (char32_t letter = 0x80; letter <= 0x10FFFF; ++letter) {
        const bool known = letter == 0x212A || letter == 0x017F;
        ASSERT_EQ(Folded(letter) < 0x80, known) << static_cast<unsigned>(letter);
    }
}

// A matcher that tries every way to divide the text would not end.
TEST(LikePatternTest, IsNotHeldUpByHostilePatterns) {
    const LikePattern pattern("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b");
    const std::string text(20000, 'a');
    EXPECT_FALSE(pattern.Matches(text));
}

} // namespace
} // namespace velmora::engine::dialect
