#include "engine/dialect/Parser.h"
#include "engine/dialect/ParserLevel.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

ExpressionPtr MakeNode(Expression::Kind kind, qsizetype at) {
    auto node = std::make_unique<Expression>();
    node->kind = kind;
    node->at = at;
    return node;
}

struct BinaryMark {
    TokenKind token;
    Operator op;
    int level; // a higher level binds more tightly
};

constexpr int comparisonLevel = 0;
constexpr int concatenationLevel = 1;
constexpr int tightestLevel = 4;

constexpr std::array binaryMarks = std::to_array<BinaryMark>({
    {TokenKind::Equal, Operator::Equal, comparisonLevel},
    {TokenKind::NotEqual, Operator::NotEqual, comparisonLevel},
    {TokenKind::Less, Operator::Less, comparisonLevel},
    {TokenKind::LessEqual, Operator::LessEqual, comparisonLevel},
    {TokenKind::Greater, Operator::Greater, comparisonLevel},
    {TokenKind::GreaterEqual, Operator::GreaterEqual, comparisonLevel},
    {TokenKind::Ampersand, Operator::Concatenate, concatenationLevel},
    {TokenKind::Plus, Operator::Add, 2},
    {TokenKind::Minus, Operator::Subtract, 2},
    {TokenKind::Mod, Operator::Modulo, 3},
    {TokenKind::Star, Operator::Multiply, tightestLevel},
    {TokenKind::Slash, Operator::Divide, tightestLevel},
});

const BinaryMark* FindBinary(TokenKind token, int level) {
    const auto found = std::find_if(binaryMarks.begin(), binaryMarks.end(),
                                    [&](const BinaryMark& mark) { return mark.token == token && mark.level == level; });
    return found == binaryMarks.end() ? nullptr : &*found;
}

} // namespace

ExpressionPtr Parser::Finish(ExpressionPtr expression) const {
    int below = 0;
    for (const ExpressionPtr& operand : expression->operands) {
        below = std::max(below, operand->height);
    }
    expression->height = below + 1;
    constexpr int maximumHeight = 200;
    if (expression->height > maximumHeight) {
        FailAt(QStringLiteral("The expression is too long (more than %1 operators in a row)").arg(maximumHeight),
               expression->at);
    }
    return expression;
}

ExpressionPtr Parser::ParseExpression() {
    const Level level(*this);
    return ParseJunction(Expression::Kind::Or);
}

// Or, and below it And: any number of operands in one node, so that a long list of alternatives stays flat.
ExpressionPtr Parser::ParseJunction(Expression::Kind kind) {
    const bool alternatives = kind == Expression::Kind::Or;
    const TokenKind word = alternatives ? TokenKind::Or : TokenKind::And;
    const auto operand = [&] { return alternatives ? ParseJunction(Expression::Kind::And) : ParseNot(); };
    ExpressionPtr first = operand();
    if (!At(word)) {
        return first;
    }
    ExpressionPtr node = MakeNode(kind, Peek().at);
    node->operands.push_back(std::move(first));
    while (Take(word)) {
        node->operands.push_back(operand());
    }
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParseNot() {
    const qsizetype at = Peek().at;
    if (!Take(TokenKind::Not)) {
        return ParsePredicate();
    }
    const Level level(*this);
    ExpressionPtr node = MakeNode(Expression::Kind::Not, at);
    node->operands.push_back(ParseNot());
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParsePredicate() {
    ExpressionPtr left = ParseBinary(concatenationLevel);
    for (;;) {
        if (const BinaryMark* mark = FindBinary(Peek().kind, comparisonLevel)) {
            ExpressionPtr node = MakeNode(Expression::Kind::Binary, Next().at);
            node->op = mark->op;
            node->operands.push_back(std::move(left));
            node->operands.push_back(ParseBinary(concatenationLevel));
            left = Finish(std::move(node));
            continue;
        }
        const bool test = At(TokenKind::Is) || At(TokenKind::Between) || At(TokenKind::In) || At(TokenKind::Like);
        const bool negatedTest =
            At(TokenKind::Not) && (At(TokenKind::Between, 1) || At(TokenKind::In, 1) || At(TokenKind::Like, 1));
        if (!test && !negatedTest) {
            return left;
        }
        left = ParseTest(std::move(left));
    }
}

// Is [Not] Null, [Not] Between, [Not] In, [Not] Like.
ExpressionPtr Parser::ParseTest(ExpressionPtr left) {
    const qsizetype at = Peek().at;
    if (Take(TokenKind::Is)) {
        ExpressionPtr node = MakeNode(Expression::Kind::IsNull, at);
        node->negated = Take(TokenKind::Not);
        Expect(TokenKind::Null, u"NULL");
        node->operands.push_back(std::move(left));
        return Finish(std::move(node));
    }
    const bool negated = Take(TokenKind::Not);
    ExpressionPtr node;
    if (Take(TokenKind::Between)) {
        node = MakeNode(Expression::Kind::Between, at);
        node->operands.push_back(std::move(left));
        node->operands.push_back(ParseBinary(concatenationLevel));
        Expect(TokenKind::And, u"AND");
        node->operands.push_back(ParseBinary(concatenationLevel));
    } else if (Take(TokenKind::Like)) {
        node = MakeNode(Expression::Kind::Like, at);
        node->operands.push_back(std::move(left));
        node->operands.push_back(ParseBinary(concatenationLevel));
    } else {
        Next();
        node = ParseIn(std::move(left), at);
    }
    node->negated = negated;
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParseIn(ExpressionPtr left, qsizetype at) {
    ExpressionPtr node = MakeNode(Expression::Kind::In, at);
    node->operands.push_back(std::move(left));
    Expect(TokenKind::Open, u"\"(\"");
    if (At(TokenKind::Select)) {
        node->query = ParseQuery();
    } else {
        for (ExpressionPtr& item : ParseList()) {
            node->operands.push_back(std::move(item));
        }
    }
    Expect(TokenKind::Close, u"\",\" or \")\"");
    return node;
}

ExpressionPtr Parser::ParseBinary(int level) {
    if (level > tightestLevel) {
        return ParseSign();
    }
    ExpressionPtr left = ParseBinary(level + 1);
    while (const BinaryMark* mark = FindBinary(Peek().kind, level)) {
        ExpressionPtr node = MakeNode(Expression::Kind::Binary, Next().at);
        node->op = mark->op;
        node->operands.push_back(std::move(left));
        node->operands.push_back(ParseBinary(level + 1));
        left = Finish(std::move(node));
    }
    return left;
}

ExpressionPtr Parser::ParseSign() {
    const qsizetype at = Peek().at;
    if (Take(TokenKind::Minus)) {
        const Level level(*this);
        ExpressionPtr node = MakeNode(Expression::Kind::Negate, at);
        node->operands.push_back(ParseSign());
        return Finish(std::move(node));
    }
    if (Take(TokenKind::Plus)) {
        const Level level(*this);
        return ParseSign();
    }
    return ParsePrimary();
}

ExpressionPtr Parser::ParsePrimary() {
    const Token token = Peek();
    switch (token.kind) {
    case TokenKind::Literal:
        return ParseLiteral(Next());
    case TokenKind::True:
    case TokenKind::Yes:
    case TokenKind::False:
    case TokenKind::No: {
        Next();
        ExpressionPtr node = MakeNode(Expression::Kind::Flag, token.at);
        node->value = token.kind == TokenKind::True || token.kind == TokenKind::Yes;
        return node;
    }
    case TokenKind::Null:
        Next();
        return MakeNode(Expression::Kind::Null, token.at);
    case TokenKind::Exists: {
        Next();
        ExpressionPtr node = MakeNode(Expression::Kind::Exists, token.at);
        Expect(TokenKind::Open, u"\"(\"");
        node->query = ParseQuery();
        Expect(TokenKind::Close, u"\")\"");
        return node;
    }
    case TokenKind::Open: {
        Next();
        ExpressionPtr node;
        if (At(TokenKind::Select)) {
            node = MakeNode(Expression::Kind::Subquery, token.at);
            node->query = ParseQuery();
        } else {
            node = ParseExpression();
        }
        Expect(TokenKind::Close, u"\")\"");
        return node;
    }
    case TokenKind::Left:
    case TokenKind::Right:
        if (At(TokenKind::Open, 1)) {
            Next();
            return ParseCall(token);
        }
        break;
    case TokenKind::Name:
        if (At(TokenKind::Open, 1)) {
            Next();
            return ParseCall(token);
        }
        return ParseName();
    case TokenKind::BracketedName:
        return ParseName();
    default:
        break;
    }
    FailExpecting(u"a name, a value or \"(\"");
}

ExpressionPtr Parser::ParseName() {
    const Token& first = Next();
    ExpressionPtr node = MakeNode(Expression::Kind::Name, first.at);
    node->name = first.text.toString();
    if (Take(TokenKind::Point)) {
        // Behind a point every word is a name, a keyword too.
        if (!At(TokenKind::BracketedName) && Peek().kind != TokenKind::Name && !IsKeyword(Peek().text)) {
            FailExpecting(u"a field's name");
        }
        node->qualifier = std::move(node->name);
        node->name = Next().text.toString();
    }
    return node;
}

ExpressionPtr Parser::ParseCall(const Token& name) {
    ExpressionPtr node = MakeNode(Expression::Kind::Call, name.at);
    node->name = name.text.toString();
    Expect(TokenKind::Open, u"\"(\"");
    if (At(TokenKind::Star) && name.text.compare(u"Count", Qt::CaseInsensitive) == 0) {
        Next();
        node->countsRows = true;
    } else if (!At(TokenKind::Close)) {
        node->operands = ParseList();
    }
    Expect(TokenKind::Close, u"\",\" or \")\"");
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParseLiteral(const Token& token) {
    ExpressionPtr node = MakeNode(Expression::Kind::Literal, token.at);
    node->value = list_.literals[static_cast<size_t>(token.literal)];
    node->literal = source_.storedQuery.isEmpty() ? token.literal : -1;
    return node;
}

std::vector<ExpressionPtr> Parser::ParseList() {
    std::vector<ExpressionPtr> list;
    do {
        list.push_back(ParseExpression());
    } while (Take(TokenKind::Comma));
    return list;
}

} // namespace velmora::engine::dialect
