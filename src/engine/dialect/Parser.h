#pragma once

#include "engine/dialect/Ast.h"
#include "engine/dialect/Lexer.h"

#include <QScopedValueRollback>

namespace velmora::engine::dialect {

// Reads one statement of the dialect. Throws EngineError with the place for anything else, and for a text that nests
// deeper than this program follows. Literals of a stored query (source.storedQuery set) carry no number.
Statement Parse(const SourceText& source);

// The work behind Parse: recursive descent over the tokens, one function per rule.
class Parser {
public:
    explicit Parser(const SourceText& source) : source_(source), list_(Tokenize(source)) {}
    Statement ParseStatement();

private:
    // Statements (Parser.cpp)
    void ParseParameters(Statement& statement);
    FieldType ParseTypeName();
    void ParseUpdate(Statement& statement);
    void ParseInsert(Statement& statement);
    void ParseDelete(Statement& statement);
    SourcePtr ParseTarget();

    // Queries and their sources (Parser.cpp)
    std::unique_ptr<Query> ParseQuery();
    void ParseSelect(Query& query, bool unionAll);
    void ParseTop(Select& select);
    SelectItem ParseSelectItem();
    SourcePtr ParseJoins();
    SourcePtr ParseSource();
    void ParseAlias(Source& source);
    void ParseOrderBy(Query& query);

    // Expressions, by falling precedence (ExpressionParser.cpp)
    ExpressionPtr ParseExpression();
    ExpressionPtr ParseJunction(Expression::Kind kind);
    ExpressionPtr ParseNot();
    ExpressionPtr ParseBinary(int level);
    ExpressionPtr ParseTest(ExpressionPtr left);
    ExpressionPtr ParseIn(ExpressionPtr left, qsizetype at);
    ExpressionPtr ParseSign();
    ExpressionPtr ParsePrimary();
    ExpressionPtr ParseName();
    ExpressionPtr ParseCall(const Token& name);
    ExpressionPtr ParseLiteral(const Token& token);
    std::vector<ExpressionPtr> ParseList();
    ExpressionPtr Finish(ExpressionPtr expression) const;

    // Tokens
    const Token& Peek(size_t ahead = 0) const;
    const Token& Next();
    // Whether the next token, or one further ahead, is this keyword, plain word or mark.
    bool At(QStringView word, size_t ahead = 0) const;
    bool AtName() const { return Peek().kind == TokenKind::Name || Peek().kind == TokenKind::BracketedName; }
    bool Take(QStringView word);
    // `what`: the word in the error message, if not itself.
    void Expect(QStringView word, QStringView what = {});
    QString ExpectName(QStringView what);
    // Throws a syntax error at the next token.
    [[noreturn]] void FailExpecting(QStringView what) const;
    [[noreturn]] void FailAt(const QString& what, qsizetype at) const;
    // One level of nesting while the result lives. Ends the parse with a clear error where a text nests deeper than any
    // sensible one, so that this program's stack is not at the mercy of a hostile text. A store whose own limit is
    // lower refuses the text itself.
    QScopedValueRollback<int> Nest();

    SourceText source_;
    TokenList list_;
    size_t next_ = 0;
    int level_ = 0;
    int sources_ = 0;
    bool literalsShapeText_ = false;
};

} // namespace velmora::engine::dialect
