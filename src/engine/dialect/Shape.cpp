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
struct PlainCharacters {
    std::array<bool, 128> of{};
    constexpr PlainCharacters() {
        for (size_t c = 0; c < of.size(); ++c) {
            const CharClass kind = detail::charClasses.of[c];
            of[c] = kind == CharClass::Word || kind == CharClass::Blank || kind == CharClass::Other;
        }
    }
};
constexpr PlainCharacters plainCharacters;

// Runs on every text that a caller builds, so it works on bare pointers: about a nanosecond for each character.
class ShapeScanner {
public:
    ShapeScanner(QStringView text, TextShape& shape)
        : text_(text), begin_(text.utf16()), end_(begin_ + text.size()), in_(begin_), literals_(shape.literals),
          out_(reinterpret_cast<char16_t*>(shape.key.data())), key_(out_) {}

    // False for a text that only the compiler can judge.
    bool Run() {
        for (;;) {
            while (in_ < end_ && *in_ < 128 && plainCharacters.of[*in_]) {
                *out_++ = *in_++;
            }
            if (in_ == end_) {
                literals_.resize(count_);
                return true;
            }
            if (!Special()) {
                return false;
            }
        }
    }

    qsizetype KeySize() const { return out_ - key_; }

private:
    bool Special() {
        if (AtLiteral()) {
            const char16_t mark = Read();
            *out_++ = mark;
            return mark != 0;
        }
        switch (ClassOf(*in_)) {
        case CharClass::Bracket:
            return CopyBracket();
        case CharClass::Control:
            return false;
        default:
            *out_++ = *in_++;
            return true;
        }
    }

    bool CopyBracket() {
        while (in_ < end_ && *in_ >= 32) {
            *out_++ = *in_;
            if (*in_++ == u']') {
                return true;
            }
        }
        return false;
    }

    // True where a literal begins.
    bool AtLiteral() const {
        switch (ClassOf(*in_)) {
        case CharClass::Digit:
            return in_ == begin_ || !IsWordPart(in_[-1]);
        case CharClass::Dot:
            return PointStartsNumber(text_, in_ - begin_);
        case CharClass::Quote:
        case CharClass::Hash:
            return true;
        default:
            return false;
        }
    }

    // Reads the literal that begins here and goes behind it; its mark, or 0 for one that only the compiler can judge.
    char16_t Read() {
        switch (ClassOf(*in_)) {
        case CharClass::Quote:
            return ReadText();
        case CharClass::Hash:
            return Take(ScanDate(text_, in_ - begin_));
        default:
            return Take(ScanNumber(text_, in_ - begin_));
        }
    }

    Value& NextLiteral() {
        if (count_ == literals_.size()) {
            literals_.emplace_back();
        }
        return literals_[count_++];
    }

    char16_t Take(ScannedLiteral&& literal) {
        if (literal.fault != LiteralFault::None) {
            return 0;
        }
        in_ = begin_ + literal.end;
        Value& taken = NextLiteral();
        taken = std::move(literal.value);
        return MarkOf(taken);
    }

    // A text without a quote inside needs no copy on the way.
    char16_t ReadText() {
        const char16_t quote = *in_;
        const char16_t* close = std::find(in_ + 1, end_, quote);
        if (close == end_ || (close + 1 < end_ && close[1] == quote)) {
            return Take(ScanText(text_, in_ - begin_));
        }
        Value& literal = NextLiteral();
        literal.AssignText(QStringView(in_ + 1, close));
        in_ = close + 1;
        return MarkOf(literal);
    }

    QStringView text_;
    const char16_t* begin_;
    const char16_t* end_;
    const char16_t* in_;
    std::vector<Value>& literals_; // each takes the place of the one that stood there before
    size_t count_ = 0;
    char16_t* out_;
    char16_t* key_;
};

} // namespace

void ScanShape(QStringView text, TextShape& shape) {
    shape.key.resize(text.size());
    ShapeScanner scanner(text, shape);
    shape.recognised = scanner.Run();
    shape.key.resize(shape.recognised ? scanner.KeySize() : 0);
    if (!shape.recognised) {
        shape.literals.clear();
    }
}

} // namespace velmora::engine::dialect
