#include "engine/dialect/LikePattern.h"

#include <gtest/gtest.h>

namespace velmora::engine::dialect {
namespace {

// The range of a pattern leaves out k and s because these are all the letters beyond ASCII that fold into it.
TEST(LikePatternTest, OnlyTwoLettersFoldIntoAscii) {
    for (char32_t letter = 0x80; letter <= 0x10FFFF; ++letter) {
        const bool known = letter == 0x212A || letter == 0x017F;
        ASSERT_EQ(QChar::toCaseFolded(letter) < 0x80, known) << static_cast<unsigned>(letter);
    }
}

// A matcher that tries every way to divide the text would not end.
TEST(LikePatternTest, IsNotHeldUpByHostilePatterns) {
    const LikePattern pattern(QStringLiteral("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
    EXPECT_FALSE(pattern.Matches(QString(20000, u'a')));
}

} // namespace
} // namespace velmora::engine::dialect
