#include "engine/dialect/LikePattern.h"

#include "engine/EngineError.h"

#include <QList>

#include <algorithm>

namespace velmora::engine::dialect {

LikePattern::LikePattern(const QString& pattern) {
    if (HasUnclosedList(pattern)) {
        throw EngineError(EngineErrorNumber::Syntax,
                          QStringLiteral("The Like pattern \"%1\" has a \"[\" without its \"]\"; the character itself "
                                         "is written [[].")
                              .arg(pattern));
    }
    const QList<uint> letters = pattern.toUcs4();
    for (auto at = letters.begin(); at != letters.end(); ++at) {
        if (*at == U'*') {
            if (steps_.empty() || !steps_.back().run) {
                steps_.push_back({true, false, {}});
            }
        } else if (*at == U'?') {
            steps_.push_back({false, false, {}});
        } else if (*at == U'#') {
            steps_.push_back({false, true, {{U'0', U'9'}}});
        } else if (*at != U'[') {
            steps_.push_back({false, true, {{*at, *at}}});
        } else {
            auto next = at + 1;
            at = std::find(next, letters.end(), U']');
            if (next == at) {
                continue; // an empty list stands for nothing
            }
            Step& list = steps_.emplace_back();
            list.listed = *next != U'!' || next + 1 == at;
            next += list.listed ? 0 : 1;
            while (next != at) {
                const bool range = at - next > 2 && next[1] == U'-';
                list.ranges.push_back({next[0], range ? next[2] : next[0]});
                next += range ? 3 : 1;
            }
        }
    }
}

bool LikePattern::Step::Fits(char32_t letter) const {
    const char32_t folded = QChar::toCaseFolded(letter);
    const bool found = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return (letter >= range.from && letter <= range.to) ||
               (folded >= QChar::toCaseFolded(range.from) && folded <= QChar::toCaseFolded(range.to));
    });
    return found == listed;
}

bool LikePattern::Matches(const QString& text) const {
    const QList<uint> letters = text.toUcs4();
    auto at = letters.begin();
    auto step = steps_.begin();
    // Where to go on when the letters behind the last "*" do not fit: one character later.
    auto runStep = steps_.end();
    auto runAt = at;
    while (at != letters.end()) {
        if (step != steps_.end() && step->run) {
            runStep = ++step;
            runAt = at;
            if (step == steps_.end()) {
                return true;
            }
        } else if (step != steps_.end() && step->Fits(*at)) {
            ++at;
            ++step;
        } else if (runStep != steps_.end()) {
            at = ++runAt;
            step = runStep;
        } else {
            return false;
        }
    }
    return step == steps_.end() || (step->run && step + 1 == steps_.end());
}

bool HasUnclosedList(QStringView pattern) {
    return pattern.lastIndexOf(u'[') > pattern.lastIndexOf(u']');
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
