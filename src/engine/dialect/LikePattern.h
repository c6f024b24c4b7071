#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace velmora::engine::dialect {

// A pattern of Like: "*" any run of characters, "?" one character, "#" one digit, "[abc]", "[a-z]", "[!a-z]" one of a
// list or none of it; "[*]", "[?]", "[#]", "[[]" and "[-]" stand for the character, as does a lone "]". Every letter
// is the same in either case.
class LikePattern {
public:
    // Throws EngineError Syntax for a "[" that is never closed.
    explicit LikePattern(const QString& pattern);

    bool Matches(const QString& text) const;

private:
    // One character of the text, or with `run` any number of them.
    struct Step {
        struct Range {
            char32_t from = 0;
            char32_t to = 0;
        };
        bool run = false;
        bool listed = true; // whether the character is in one of the ranges, or in none
        std::vector<Range> ranges;

        bool Fits(char32_t letter) const;
    };

    std::vector<Step> steps_;
};

// Whether the pattern has a "[" without its "]".
bool HasUnclosedList(QStringView pattern);

// The range of texts, compared without regard to the case of A to Z, that holds everything a pattern matches.
struct LikeRange {
    QString from;
    QString below;
};
// None where the pattern does not begin with enough plain letters.
std::optional<LikeRange> RangeOfLike(QStringView pattern);

} // namespace velmora::engine::dialect
