#include "engine/dialect/Compiler.h"
#include "engine/dialect/Literals.h"

#include <algorithm>
#include <array>

namespace velmora::engine::dialect {

namespace {

// Marks that stand for the literals of a kind in a key. A text cannot hold them itself: control characters are
// refused outside of literals.
char16_t MarkOf(const Value& literal) {
    if (literal.IsInteger()) {
        return 1;
    }
    if (literal.IsReal()) {
        return 2;
    }
    return literal.IsText() ? 3 : 4;
}

// True for the characters that a key takes over as they are, wherever they stand outside of literals and brackets.
constexpr std::array<bool, 128> plainCharacters = [] {
    std::array<bool, 128> plain{};
    for (size_t c = 0; c < plain.size(); ++c) {
        const CharClass kind = ClassOfAscii(static_cast<char16_t>(c));
        plain[c] = kind == CharClass::Word || kind == CharClass::Blank || kind == CharClass::Other;
    }
    return plain;
}();

// Reads the literal at `at` and returns the place behind it; -1 for one that only the compiler can judge.
qsizetype ReadLiteral(QStringView text, qsizetype at, Value& value) {
    // A text without a quote inside needs no copy on the way.
    const QChar quote = text[at];
    const qsizetype close = ClassOf(quote.unicode()) == CharClass::Quote ? text.indexOf(quote, at + 1) : -1;
    if (close >= 0 && (close + 1 == text.size() || text[close + 1] != quote)) {
        value.AssignText(text.mid(at + 1, close - at - 1));
        return close + 1;
    }
    ScannedLiteral literal = ScanLiteral(text, at);
    value = std::move(literal.value);
    return literal.fault == LiteralFault::None ? literal.end : -1;
}

// Runs on every text that a caller builds, so it works on bare pointers: about a nanosecond for each character. Each
// literal takes the place of the one that stood there before. Returns the size of the key; -1 for a text that only the
// compiler can judge.
qsizetype Scan(QStringView text, char16_t* key, std::vector<Value>& literals) {
    const char16_t* const in = text.utf16();
    char16_t* out = key;
    size_t count = 0;
    for (qsizetype at = 0; at < text.size();) {
        if (in[at] < plainCharacters.size() && plainCharacters[in[at]]) {
            *out++ = in[at++];
            continue;
        }
        if (LiteralStartsAt(text, at)) {
            if (count == literals.size()) {
                literals.emplace_back();
            }
            at = ReadLiteral(text, at, literals[count]);
            if (at < 0) {
                return -1;
            }
            *out++ = MarkOf(literals[count++]);
        } else if (ClassOf(in[at]) == CharClass::Control) {
            return -1;
        } else if (in[at] == u'[') {
            const qsizetype close = text.indexOf(u']', at);
            if (close < 0 || std::any_of(in + at, in + close, [](char16_t c) { return c < u' '; })) {
                return -1;
            }
            out = std::copy(in + at, in + close + 1, out);
            at = close + 1;
        } else {
            *out++ = in[at++];
        }
    }
    literals.resize(count);
    return out - key;
}

} // namespace

void ScanShape(QStringView text, TextShape& shape) {
    shape.key.resize(text.size());
    const qsizetype size = Scan(text, reinterpret_cast<char16_t*>(shape.key.data()), shape.literals);
    shape.recognised = size >= 0;
    shape.key.resize(std::max<qsizetype>(size, 0));
    if (!shape.recognised) {
        shape.literals.clear();
    }
}

} // namespace velmora::engine::dialect
