#pragma once

#include "base/Value.h"

#include <QString>
#include <QStringView>

namespace velmora::engine::dialect {

// How a character of a text begins or continues a word of it. The lexer and the quick scan of shapes share these
// rules and the reader below, so that both find the same literals.
enum class CharClass : unsigned char { Other, Blank, Word, Digit, Quote, Bracket, Hash, Dot, Control };

constexpr CharClass ClassOfAscii(char16_t c) {
    switch (c) {
    case u' ':
    case u'\t':
    case u'\r':
    case u'\n':
        return CharClass::Blank;
    case u'_':
        return CharClass::Word;
    case u'"':
    case u'\'':
        return CharClass::Quote;
    case u'[':
        return CharClass::Bracket;
    case u'#':
        return CharClass::Hash;
    case u'.':
        return CharClass::Dot;
    default:
        break;
    }
    if (c < u' ' || c == 127) {
        return CharClass::Control;
    }
    const bool letter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    return letter ? CharClass::Word : c >= u'0' && c <= u'9' ? CharClass::Digit : CharClass::Other;
}

inline CharClass ClassOf(char16_t c) {
    if (c < 128) {
        return ClassOfAscii(c);
    }
    const QChar unit(c);
    return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate() ? CharClass::Word : CharClass::Other;
}

inline bool IsWordPart(char16_t c) {
    const CharClass kind = ClassOf(c);
    return kind == CharClass::Word || kind == CharClass::Digit;
}

// True where a number, text or date begins. A digit within a name is none, nor is the point behind a name.
bool LiteralStartsAt(QStringView text, qsizetype at);

enum class LiteralFault { None, Unterminated, BadNumber, BadDate };

struct ScannedLiteral {
    Value value;
    qsizetype end = 0; // behind the literal's last character
    LiteralFault fault = LiteralFault::None;
    QStringView dateProblem; // BadDate: what is wrong, for the error message
};

// Reads the literal that starts at `at`. A quote doubled inside a text stands for itself; a number that runs on into a
// word is BadNumber.
ScannedLiteral ScanLiteral(QStringView text, qsizetype at);

} // namespace velmora::engine::dialect
