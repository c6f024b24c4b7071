#include "engine/dialect/LikePattern.h"

#include "engine/EngineError.h"
#include "engine/dialect/Utf8.h"

#include <algorithm>

namespace velmora::engine::dialect {

LikePattern::LikePattern(std::string_view utf8) {
    std::vector<char32_t> pattern;
    pattern.reserve(utf8.size());
    for (size_t at = 0; at < utf8.size();) {
        pattern.push_back(NextCharacter(utf8, at));
    }
    using Kind = Step::Kind;
    for (size_t at = 0; at < pattern.size();) {
        const char32_t c = pattern[at];
        if (c == U'[') {
            at = ReadList(pattern, at);
            continue;
        }
        ++at;
        if (c == U'*') {
            if (steps_.empty() || steps_.back().kind != Kind::Run) {
                steps_.push_back({Kind::Run});
            }
        } else if (c == U'?') {
            steps_.push_back({Kind::Any});
        } else if (c == U'#') {
            steps_.push_back({Kind::Digit});
        } else {
            steps_.push_back({Kind::Letter, Folded(c)});
        }
    }
}

// Reads "[...]" at `at`; returns the place behind it.
size_t LikePattern::ReadList(const std::vector<char32_t>& pattern, size_t at) {
    const auto from = pattern.begin() + static_cast<std::ptrdiff_t>(at) + 1;
    const auto end = std::find(from, pattern.end(), U']');
    if (end == pattern.end()) {
        throw EngineError(EngineErrorNumber::Syntax,
                          QStringLiteral("The Like pattern \"%1\" has a \"[\" without its \"]\"; the character itself "
                                         "is written [[].")
                              .arg(QString::fromUcs4(pattern.data(), static_cast<qsizetype>(pattern.size()))));
    }
    const auto behind = static_cast<size_t>(end - pattern.begin()) + 1;
    if (from == end) {
        return behind; // an empty list stands for nothing
    }
    Step step{Step::Kind::OneOf, 0, static_cast<int>(ranges_.size()), 0};
    auto next = from;
    if (*next == U'!' && next + 1 != end) {
        step.kind = Step::Kind::NoneOf;
        ++next;
    }
    while (next != end) {
        const bool range = end - next > 2 && next[1] == U'-';
        ranges_.push_back({next[0], range ? next[2] : next[0]});
        next += range ? 3 : 1;
    }
    step.rangeCount = static_cast<int>(ranges_.size()) - step.firstRange;
    steps_.push_back(step);
    return behind;
}

bool LikePattern::Fits(const Step& step, char32_t letter) const {
    switch (step.kind) {
    case Step::Kind::Letter:
        return Folded(letter) == step.letter;
    case Step::Kind::Any:
    case Step::Kind::Run:
        return true;
    case Step::Kind::Digit:
        return letter >= U'0' && letter <= U'9';
    case Step::Kind::OneOf:
    case Step::Kind::NoneOf:
        break;
    }
    const auto first = ranges_.begin() + step.firstRange;
    const char32_t folded = Folded(letter);
    const bool listed = std::any_of(first, first + step.rangeCount, [&](const Range& range) {
        return (letter >= range.from && letter <= range.to) ||
               (folded >= Folded(range.from) && folded <= Folded(range.to));
    });
    return listed == (step.kind == Step::Kind::OneOf);
}

bool LikePattern::Matches(std::string_view utf8) const {
    size_t at = 0;
    size_t step = 0;
    // Where to go on when the letters behind the last "*" do not fit: one character later.
    size_t runStep = steps_.size();
    size_t runAt = 0;
    while (at < utf8.size()) {
        if (step < steps_.size() && steps_[step].kind == Step::Kind::Run) {
            runStep = ++step;
            runAt = at;
            if (step == steps_.size()) {
                return true;
            }
            continue;
        }
        size_t behind = at;
        const char32_t letter = NextCharacter(utf8, behind);
        if (step < steps_.size() && Fits(steps_[step], letter)) {
            at = behind;
            ++step;
            continue;
        }
        if (runStep == steps_.size()) {
            return false;
        }
        NextCharacter(utf8, runAt);
        at = runAt;
        step = runStep;
    }
    while (step < steps_.size() && steps_[step].kind == Step::Kind::Run) {
        ++step;
    }
    return step == steps_.size();
}

qsizetype UnclosedList(QStringView pattern) {
    qsizetype open = pattern.indexOf(u'[');
    while (open >= 0) {
        const qsizetype close = pattern.indexOf(u']', open);
        if (close < 0) {
            return open;
        }
        open = pattern.indexOf(u'[', close);
    }
    return -1;
}

std::optional<LikeRange> RangeOfLike(QStringView pattern) {
    QString prefix;
    for (const QChar c : pattern) {
        const char16_t letter = c.toLower().unicode();
        // Letters beyond ASCII fold to k and s too, and an index does not know that.
        const bool plain = letter > u' ' - 1 && letter < 0x7F && letter != u'k' && letter != u's';
        if (!plain || letter == u'*' || letter == u'?' || letter == u'#' || letter == u'[' || c.unicode() > 0x7F) {
            break;
        }
        prefix += QChar(letter);
    }
    if (prefix.isEmpty()) {
        return std::nullopt;
    }
    QString below = prefix;
    below.back() = QChar(static_cast<char16_t>(prefix.back().unicode() + 1));
    return LikeRange{prefix, below};
}

} // namespace velmora::engine::dialect
