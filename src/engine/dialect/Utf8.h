#pragma once

#include <QChar>

#include <string_view>

namespace velmora::engine::dialect {

// The character that starts at `at`, which moves behind it. A byte that is no UTF-8 counts as one character.
inline char32_t NextCharacter(std::string_view text, size_t& at) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at++);
    if (first < 0x80) {
        return first;
    }
    const size_t more = first >= 0xF0 && first < 0xF8 ? 3 : first >= 0xE0 && first < 0xF0 ? 2 : first >= 0xC0 ? 1 : 0;
    constexpr char32_t strayBytes = 0xDC00;
    if (more == 0 || first >= 0xF8 || at + more > text.size()) {
        return strayBytes + first;
    }
    char32_t letter = first & (0x3Fu >> more);
    for (size_t i = 0; i < more; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            return strayBytes + first;
        }
        letter = (letter << 6) | (byte(at + i) & 0x3Fu);
    }
    at += more;
    return letter;
}

// The same for upper and lower case of a letter.
inline char32_t Folded(char32_t letter) {
    if (letter < 0x80) {
        return letter >= U'A' && letter <= U'Z' ? letter + 32 : letter;
    }
    return QChar::toCaseFolded(letter);
}

} // namespace velmora::engine::dialect
