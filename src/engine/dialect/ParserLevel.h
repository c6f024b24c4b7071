#pragma once

#include "engine/dialect/Parser.h"

namespace velmora::engine::dialect {

// One level of nesting while it lives. Ends the parse with a clear error where a text nests deeper than any sensible
// one, so that this program's stack is not at the mercy of a hostile text. A store whose own limit is lower refuses
// the text itself.
class Parser::Level {
public:
    explicit Level(Parser& parser) : parser_(parser) {
        constexpr int limit = 100;
        if (parser_.level_ >= limit) {
            parser_.FailAt(QStringLiteral("The text nests too deeply (more than %1 levels)").arg(limit),
                           parser_.Peek().at);
        }
        ++parser_.level_;
    }
    ~Level() { --parser_.level_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    Parser& parser_;
};

} // namespace velmora::engine::dialect
