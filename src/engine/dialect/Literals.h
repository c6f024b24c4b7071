#pragma once

#include "base/Value.h"

#include <QString>
#include <QStringView>

#include <string_view>

namespace velmora::engine::dialect {

// How a character of a text begins or continues a word of it. The lexer and the quick scan of shapes share these
// rules and the readers below, so that both find the same literals.
enum class CharClass : unsigned char { Other, Blank, Word, Digit, Quote, Bracket, Hash, Dot, Control };

namespace detail {
CharClass ClassBeyondAscii(char16_t c);
struct CharClasses {
    CharClass of[128];
    constexpr CharClasses() : of() {
        for (int c = 0; c < 128; ++c) {
            of[c] = c < 32 || c == 127 ? CharClass::Control : CharClass::Other;
        }
        for (size_t c = 'A'; c <= 'Z'; ++c) {
            of[c] = of[c + 32] = CharClass::Word;
        }
        for (size_t c = '0'; c <= '9'; ++c) {
            of[c] = CharClass::Digit;
        }
        const auto set = [this](std::string_view characters, CharClass what) constexpr {
            for (const char c : characters) {
                of[static_cast<unsigned char>(c)] = what;
            }
        };
        set(" \t\r\n", CharClass::Blank);
        set("_", CharClass::Word);
        set("\"'", CharClass::Quote);
        set("[", CharClass::Bracket);
        set("#", CharClass::Hash);
        set(".", CharClass::Dot);
    }
};
inline constexpr CharClasses charClasses;
} // namespace detail

inline CharClass ClassOf(char16_t c) {
    return c < 128 ? detail::charClasses.of[c] : detail::ClassBeyondAscii(c);
}

inline bool IsWordPart(char16_t c) {
    const CharClass kind = ClassOf(c);
    return kind == CharClass::Word || kind == CharClass::Digit;
}

// True where ".5" stands for a number: a digit behind the point, and no name before it.
inline bool PointStartsNumber(QStringView text, qsizetype at) {
    const bool digitBehind = at + 1 < text.size() && ClassOf(text[at + 1].unicode()) == CharClass::Digit;
    return digitBehind && (at == 0 || (!IsWordPart(text[at - 1].unicode()) && text[at - 1] != u']'));
}

enum class LiteralFault { None, Unterminated, BadNumber, BadDate };

struct ScannedLiteral {
    Value value;
    qsizetype end = 0; // behind the literal's last character
    LiteralFault fault = LiteralFault::None;
};

// `at` is the first digit, or a point that starts a number. A number that runs on into a word is BadNumber.
ScannedLiteral ScanNumber(QStringView text, qsizetype at);
// `at` is the opening quote; the quote doubled inside stands for itself.
ScannedLiteral ScanText(QStringView text, qsizetype at);
// `at` is the opening "#".
ScannedLiteral ScanDate(QStringView text, qsizetype at);

// What is wrong with the text between two "#" marks, for the error message; empty for a good date.
QString DateFault(QStringView inner);

} // namespace velmora::engine::dialect
