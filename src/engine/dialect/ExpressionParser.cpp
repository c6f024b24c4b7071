#include "engine/dialect/Parser.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

using Kind = Expression::Kind;

template <class... Operands>
ExpressionPtr MakeNode(Kind kind, qsizetype at, Operands&&... operands) {
    auto node = std::make_unique<Expression>();
    node->kind = kind;
    node->at = at;
    (node->operands.push_back(std::forward<Operands>(operands)), ...);
    return node;
}

struct BinaryMark {
    QStringView mark;
    Operator op;
    int level; // a higher level binds more tightly
};

constexpr int comparisonLevel = 0;
constexpr int concatenationLevel = 1;
constexpr int tightestLevel = 4;

constexpr std::array binaryMarks = std::to_array<BinaryMark>({
    {u"=", Operator::Equal, comparisonLevel},
    {u"<>", Operator::NotEqual, comparisonLevel},
    {u"<", Operator::Less, comparisonLevel},
    {u"<=", Operator::LessEqual, comparisonLevel},
    {u">", Operator::Greater, comparisonLevel},
    {u">=", Operator::GreaterEqual, comparisonLevel},
    {u"&", Operator::Concatenate, concatenationLevel},
    {u"+", Operator::Add, 2},
    {u"-", Operator::Subtract, 2},
    {u"MOD", Operator::Modulo, 3},
    {u"*", Operator::Multiply, tightestLevel},
    {u"/", Operator::Divide, tightestLevel},
});

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
    const auto level = Nest();
    return ParseJunction(Kind::Or);
}

// Or, and below it And: any number of operands in one node, so that a long list of alternatives stays flat.
ExpressionPtr Parser::ParseJunction(Kind kind) {
    const bool alternatives = kind == Kind::Or;
    const QStringView word = alternatives ? u"OR" : u"AND";
    const auto operand = [&] { return alternatives ? ParseJunction(Kind::And) : ParseNot(); };
    ExpressionPtr first = operand();
    if (!At(word)) {
        return first;
    }
    ExpressionPtr node = MakeNode(kind, Peek().at, std::move(first));
    while (Take(word)) {
        node->operands.push_back(operand());
    }
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParseNot() {
    const qsizetype at = Peek().at;
    if (!Take(u"NOT")) {
        return ParseBinary(comparisonLevel);
    }
    const auto level = Nest();
    return Finish(MakeNode(Kind::Not, at, ParseNot()));
}

// The operators of this level and all that bind more tightly, read from the left. Is, Between, In and Like bind as
// comparisons do.
ExpressionPtr Parser::ParseBinary(int level) {
    if (level > tightestLevel) {
        return ParseSign();
    }
    ExpressionPtr left = ParseBinary(level + 1);
    for (;;) {
        const auto* const mark = std::find_if(binaryMarks.begin(), binaryMarks.end(), [&](const BinaryMark& each) {
            return each.level == level && At(each.mark);
        });
        if (mark != binaryMarks.end()) {
            const qsizetype at = Next().at;
            left = Finish(MakeNode(Kind::Binary, at, std::move(left), ParseBinary(level + 1)));
            left->op = mark->op;
            continue;
        }
        const size_t word = At(u"NOT") ? 1 : 0;
        const bool test = At(u"BETWEEN", word) || At(u"IN", word) || At(u"LIKE", word) || At(u"IS");
        if (level != comparisonLevel || !test) {
            return left;
        }
        left = ParseTest(std::move(left));
    }
}

// Is [Not] Null, [Not] Between, [Not] In, [Not] Like.
ExpressionPtr Parser::ParseTest(ExpressionPtr left) {
    const qsizetype at = Peek().at;
    if (Take(u"IS")) {
        const bool negated = Take(u"NOT");
        Expect(u"NULL");
        ExpressionPtr node = Finish(MakeNode(Kind::IsNull, at, std::move(left)));
        node->negated = negated;
        return node;
    }
    const bool negated = Take(u"NOT");
    ExpressionPtr node;
    if (Take(u"BETWEEN")) {
        node = MakeNode(Kind::Between, at, std::move(left), ParseBinary(concatenationLevel));
        Expect(u"AND");
        node->operands.push_back(ParseBinary(concatenationLevel));
    } else if (Take(u"LIKE")) {
        node = MakeNode(Kind::Like, at, std::move(left), ParseBinary(concatenationLevel));
    } else {
        Expect(u"IN");
        node = ParseIn(std::move(left), at);
    }
    node->negated = negated;
    return Finish(std::move(node));
}

ExpressionPtr Parser::ParseIn(ExpressionPtr left, qsizetype at) {
    ExpressionPtr node = MakeNode(Kind::In, at, std::move(left));
    Expect(u"(");
    if (At(u"SELECT")) {
        node->query = ParseQuery();
    } else {
        for (ExpressionPtr& item : ParseList()) {
            node->operands.push_back(std::move(item));
        }
    }
    Expect(u")", u"\",\" or \")\"");
    return node;
}

ExpressionPtr Parser::ParseSign() {
    const qsizetype at = Peek().at;
    if (Take(u"-")) {
        const auto level = Nest();
        return Finish(MakeNode(Kind::Negate, at, ParseSign()));
    }
    if (Take(u"+")) {
        const auto level = Nest();
        return ParseSign();
    }
    return ParsePrimary();
}

ExpressionPtr Parser::ParsePrimary() {
    const Token token = Peek();
    if (token.kind == TokenKind::Literal) {
        return ParseLiteral(Next());
    }
    if ((token.kind == TokenKind::Name || At(u"LEFT") || At(u"RIGHT")) && At(u"(", 1)) {
        return ParseCall(Next());
    }
    if (AtName()) {
        return ParseName();
    }
    const bool yes = Take(u"TRUE") || Take(u"YES");
    if (yes || Take(u"FALSE") || Take(u"NO")) {
        ExpressionPtr node = MakeNode(Kind::Flag, token.at);
        node->value = yes;
        return node;
    }
    if (Take(u"NULL")) {
        return MakeNode(Kind::Null, token.at);
    }
    const bool exists = Take(u"EXISTS");
    if (!exists && !At(u"(")) {
        FailExpecting(u"a name, a value or \"(\"");
    }
    Expect(u"(");
    ExpressionPtr node;
    if (exists || At(u"SELECT")) {
        node = MakeNode(exists ? Kind::Exists : Kind::Subquery, token.at);
        node->query = ParseQuery();
    } else {
        node = ParseExpression();
    }
    Expect(u")");
    return node;
}

ExpressionPtr Parser::ParseName() {
    const Token& first = Next();
    ExpressionPtr node = MakeNode(Kind::Name, first.at);
    node->name = first.text.toString();
    if (Take(u".")) {
        // Behind a point every word is a name, a keyword too.
        if (!AtName() && Peek().kind != TokenKind::Keyword) {
            FailExpecting(u"a field's name");
        }
        node->qualifier = std::move(node->name);
        node->name = Next().text.toString();
    }
    return node;
}

ExpressionPtr Parser::ParseCall(const Token& name) {
    ExpressionPtr node = MakeNode(Kind::Call, name.at);
    node->name = name.text.toString();
    Expect(u"(");
    if (name.text.compare(u"Count", Qt::CaseInsensitive) == 0 && Take(u"*")) {
        node->countsRows = true;
    } else if (!At(u")")) {
        node->operands = ParseList();
    }
    Expect(u")", u"\",\" or \")\"");
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
    } while (Take(u","));
    return list;
}

} // namespace velmora::engine::dialect
