#pragma once

#include "base/Value.h"
#include "engine/dialect/Failure.h"

#include <QStringView>

#include <vector>

namespace velmora::engine::dialect {

enum class TokenKind {
    End,
    Name,          // a word that is no keyword
    BracketedName, // [...]; `text` without the brackets
    Literal,
    Comma,
    Point,
    Open,
    Close,
    Semicolon,
    Star,
    Slash,
    Plus,
    Minus,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    // Keywords. They are names nowhere but behind a point or in brackets.
    All,
    And,
    As,
    Between,
    By,
    Delete,
    Distinct,
    Exists,
    False,
    From,
    Group,
    Having,
    In,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Left,
    Like,
    Mod,
    No,
    Not,
    Null,
    On,
    Or,
    Order,
    Right,
    Select,
    Set,
    True,
    Union,
    Update,
    Values,
    Where,
    Yes,
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
