#pragma once

#include "engine/dialect/Ast.h"
#include "engine/dialect/Failure.h"
#include "engine/dialect/Lexer.h"

namespace velmora::engine::dialect {

// Reads one statement of the dialect. Throws EngineError with the place for anything else, and for a text that nests
// deeper than this program follows. Literals of a stored query (source.storedQuery set) carry no number.
Statement Parse(const SourceText& source);

// The work behind Parse: recursive descent over the tokens, one function per rule.
class Parser {
public:
    explicit Parser(const SourceText& source);
    Statement ParseStatement();

private:
    class Level;

    // Statements (Parser.cpp)
    void ParseParameters(Statement& statement);
    FieldType ParseTypeName();
    void ParseUpdate(Statement& statement);
    void ParseInsert(Statement& statement);
    void ParseDelete(Statement& statement);
    SourcePtr ParseTarget();

    // Queries and their sources (QueryParser.cpp)
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
    ExpressionPtr ParsePredicate();
    ExpressionPtr ParseTest(ExpressionPtr left);
    ExpressionPtr ParseIn(ExpressionPtr left, qsizetype at);
    ExpressionPtr ParseBinary(int level);
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
    bool At(TokenKind kind, size_t ahead = 0) const { return Peek(ahead).kind == kind; }
    bool AtWord(QStringView word, size_t ahead = 0) const;
    bool Take(TokenKind kind);
    bool TakeWord(QStringView word);
    const Token& Expect(TokenKind kind, QStringView what);
    QString ExpectName(QStringView what);
    // Throws a syntax error at the next token.
    [[noreturn]] void FailExpecting(QStringView what) const;
    [[noreturn]] void FailAt(const QString& what, qsizetype at) const;

    SourceText source_;
    TokenList list_;
    size_t next_ = 0;
    int level_ = 0;
    int sources_ = 0;
    bool literalsShapeText_ = false;
};

} // namespace velmora::engine::dialect
