#pragma once

#include "engine/dialect/Resolver.h"

namespace velmora::engine::dialect {

// While it lives, the resolver works on a stored query's text: errors name it, its PARAMETERS clause counts, and a
// query that uses itself is found out.
class Resolver::StoredQueryText {
public:
    StoredQueryText(Resolver& resolver, const SourceText& text)
        : resolver_(resolver), outerText_(resolver.text_), outerDeclared_(std::move(resolver.declaredHere_)) {
        resolver_.text_ = &text;
        resolver_.declaredHere_.clear();
        resolver_.openQueries_.push_back(text.storedQuery);
    }
    ~StoredQueryText() {
        resolver_.text_ = outerText_;
        resolver_.declaredHere_ = std::move(outerDeclared_);
        resolver_.openQueries_.pop_back();
    }
    StoredQueryText(const StoredQueryText&) = delete;
    StoredQueryText& operator=(const StoredQueryText&) = delete;

private:
    Resolver& resolver_;
    const SourceText* outerText_;
    QStringList outerDeclared_;
};

} // namespace velmora::engine::dialect
