#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <string_view>
#include <vector>

namespace velmora::engine::dialect {

// A pattern of Like: "*" any run of characters, "?" one character, "#" one digit, "[abc]", "[a-z]", "[!a-z]" one of a
// list or none of it; "[*]", "[?]", "[#]", "[[]" and "[-]" stand for the character, as does a lone "]". Every letter
// is the same in either case.
class LikePattern {
public:
    // Throws EngineError Syntax for a "[" that is never closed.
    explicit LikePattern(std::string_view utf8);

    bool Matches(std::string_view utf8) const;

private:
    struct Range {
        char32_t from = 0;
        char32_t to = 0;
    };
    struct Step {
        enum class Kind : unsigned char { Letter, Any, Digit, OneOf, NoneOf, Run };
        Kind kind = Kind::Letter;
        char32_t letter = 0; // folded
        int firstRange = 0;
        int rangeCount = 0;
    };

    bool Fits(const Step& step, char32_t letter) const;
    size_t ReadList(const std::vector<char32_t>& pattern, size_t at);

    std::vector<Step> steps_;
    std::vector<Range> ranges_;
};

// The place of a "[" without its "]"; -1 for a good pattern.
qsizetype UnclosedList(QStringView pattern);

// The range of texts, compared without regard to the case of A to Z, that holds everything a pattern matches.
struct LikeRange {
    QString from;
    QString below;
};
// None where the pattern does not begin with enough plain letters.
std::optional<LikeRange> RangeOfLike(QStringView pattern);

} // namespace velmora::engine::dialect
