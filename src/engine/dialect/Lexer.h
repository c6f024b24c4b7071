#pragma once

#include "base/Value.h"
#include "engine/EngineError.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace velmora::engine::dialect {

// A text under work, for error messages: the caller's, or that of a stored query it uses.
struct SourceText {
    QStringView text;
    QString storedQuery; // empty for the caller's own text
};

// Throws the error with the place in words: "... at line 1, column 23." `at` counts characters of the text from 0;
// beyond its end means its end.
[[noreturn]] void Fail(EngineErrorNumber number, const QString& what, const SourceText& source, qsizetype at);

enum class TokenKind {
    End,
    Name,          // a word that is no keyword
    BracketedName, // [...]; `text` without the brackets
    Keyword,       // a name nowhere but behind a point or in brackets
    Literal,
    Mark, // an operator, a parenthesis, a comma, ...
};

struct Token {
    TokenKind kind = TokenKind::End;
    qsizetype at = 0; // place of its first character in the text
    QStringView text; // as written
    int literal = -1; // for a Literal, its number in the order of the text
};

struct TokenList {
    std::vector<Token> tokens; // the last one is End
    std::vector<Value> literals;
};

// Throws EngineError with the place of what is no word, number, text, date or mark of the dialect. The tokens refer to
// the text of `source`, which must outlive them.
TokenList Tokenize(const SourceText& source);

// True for a word that must stand in brackets to be a name.
bool IsKeyword(QStringView word);

} // namespace velmora::engine::dialect
