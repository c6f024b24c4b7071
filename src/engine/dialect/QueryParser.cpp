#include "engine/dialect/Parser.h"
#include "engine/dialect/ParserLevel.h"

namespace velmora::engine::dialect {

std::unique_ptr<Query> Parser::ParseQuery() {
    const Level level(*this);
    auto query = std::make_unique<Query>();
    ParseSelect(*query, false);
    constexpr size_t maximumSelects = 100;
    while (At(TokenKind::Union)) {
        if (query->selects.size() == maximumSelects) {
            FailAt(QStringLiteral("A UNION joins at most %1 selects: one more").arg(maximumSelects), Peek().at);
        }
        Next();
        const bool all = Take(TokenKind::All);
        ParseSelect(*query, all);
    }
    if (At(TokenKind::Order)) {
        ParseOrderBy(*query);
    }
    return query;
}

void Parser::ParseSelect(Query& query, bool unionAll) {
    Select select;
    select.at = Peek().at;
    select.unionAll = unionAll;
    Expect(TokenKind::Select, u"SELECT");
    if (!Take(TokenKind::All)) {
        select.distinct = Take(TokenKind::Distinct);
    }
    ParseTop(select);
    do {
        select.items.push_back(ParseSelectItem());
    } while (Take(TokenKind::Comma));
    Expect(TokenKind::From, u"\",\" or FROM");
    do {
        select.from.push_back(ParseJoins());
    } while (Take(TokenKind::Comma));
    if (Take(TokenKind::Where)) {
        select.where = ParseExpression();
    }
    if (Take(TokenKind::Group)) {
        Expect(TokenKind::By, u"BY");
        select.groupBy = ParseList();
    }
    if (Take(TokenKind::Having)) {
        select.having = ParseExpression();
    }
    query.selects.push_back(std::move(select));
}

void Parser::ParseTop(Select& select) {
    if (!AtWord(u"TOP") || !At(TokenKind::Literal, 1)) {
        return;
    }
    Next();
    const Token& count = Next();
    const Value& value = list_.literals[static_cast<size_t>(count.literal)];
    if (!value.IsInteger() || value.ToInteger() < 1) {
        FailAt(QStringLiteral("TOP needs a whole number of at least 1, not %1").arg(count.text), count.at);
    }
    if (AtWord(u"PERCENT") && !At(TokenKind::Comma, 1) && !At(TokenKind::From, 1) && !At(TokenKind::Point, 1)) {
        FailAt(QStringLiteral("TOP with PERCENT is not part of the dialect: \"PERCENT\""), Peek().at);
    }
    select.top = value.ToInteger();
    literalsShapeText_ = true;
}

SelectItem Parser::ParseSelectItem() {
    SelectItem item;
    item.at = Peek().at;
    const bool name = At(TokenKind::Name) || At(TokenKind::BracketedName);
    if (Take(TokenKind::Star)) {
        item.star = true;
        return item;
    }
    if (name && At(TokenKind::Point, 1) && At(TokenKind::Star, 2)) {
        item.star = true;
        item.starOf = Next().text.toString();
        Next();
        Next();
        return item;
    }
    item.expression = ParseExpression();
    if (Take(TokenKind::As)) {
        item.alias = ExpectName(u"a name behind AS");
    }
    return item;
}

SourcePtr Parser::ParseJoins() {
    const Level level(*this);
    SourcePtr left = ParseSource();
    for (;;) {
        JoinKind kind = JoinKind::Inner;
        const qsizetype at = Peek().at;
        if (Take(TokenKind::Inner)) {
            kind = JoinKind::Inner;
        } else if (At(TokenKind::Left) || At(TokenKind::Right)) {
            kind = Next().kind == TokenKind::Left ? JoinKind::Left : JoinKind::Right;
            TakeWord(u"OUTER");
        } else if (At(TokenKind::Join)) {
            FailAt(QStringLiteral("A join is written INNER JOIN, LEFT JOIN or RIGHT JOIN: \"JOIN\""), at);
        } else {
            return left;
        }
        Expect(TokenKind::Join, u"JOIN");
        auto join = std::make_unique<Source>();
        join->kind = Source::Kind::Join;
        join->at = at;
        join->join = kind;
        join->left = std::move(left);
        join->right = ParseSource();
        Expect(TokenKind::On, u"ON");
        join->on = ParseExpression();
        left = std::move(join);
    }
}

SourcePtr Parser::ParseSource() {
    constexpr int maximumSources = 50;
    if (++sources_ > maximumSources) {
        FailAt(QStringLiteral("A text names at most %1 tables and queries: one more").arg(maximumSources), Peek().at);
    }
    if (At(TokenKind::Open) && !At(TokenKind::Select, 1)) {
        Next();
        SourcePtr inner = ParseJoins();
        Expect(TokenKind::Close, u"\")\"");
        return inner;
    }
    auto source = std::make_unique<Source>();
    source->at = Peek().at;
    if (Take(TokenKind::Open)) {
        source->kind = Source::Kind::Select;
        source->query = ParseQuery();
        Expect(TokenKind::Close, u"\")\"");
    } else {
        source->name = ExpectName(u"a table, a stored query or a select in parentheses");
    }
    ParseAlias(*source);
    return source;
}

void Parser::ParseAlias(Source& source) {
    if (Take(TokenKind::As)) {
        source.alias = ExpectName(u"a name behind AS");
    } else if (At(TokenKind::Name) || At(TokenKind::BracketedName)) {
        source.alias = Next().text.toString();
    }
}

void Parser::ParseOrderBy(Query& query) {
    Next();
    Expect(TokenKind::By, u"BY");
    do {
        OrderItem item;
        item.expression = ParseExpression();
        item.descending = TakeWord(u"DESC");
        if (!item.descending) {
            TakeWord(u"ASC");
        }
        query.orderBy.push_back(std::move(item));
    } while (Take(TokenKind::Comma));
}

} // namespace velmora::engine::dialect
