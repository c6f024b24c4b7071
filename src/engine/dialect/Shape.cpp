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
        : text_(text), begin_(text.utf16()), end_(begin_ + text.size()), in_(begin_),
          out_(reinterpret_cast<char16_t*>(shape.key.data())), key_(out_), literals_(shape.literals) {}

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
        const qsizetype at = in_ - begin_;
        switch (ClassOf(*in_)) {
        case CharClass::Digit:
            if (in_ > begin_ && IsWordPart(in_[-1])) {
                break;
            }
            return Replace(ScanNumber(text_, at));
        case CharClass::Dot:
            if (!PointStartsNumber(text_, at)) {
                break;
            }
            return Replace(ScanNumber(text_, at));
        case CharClass::Quote:
            return ReplaceText();
        case CharClass::Hash:
            return Replace(ScanDate(text_, at));
        case CharClass::Bracket:
            return CopyBracket();
        case CharClass::Control:
            return false;
        case CharClass::Word:
        case CharClass::Blank:
        case CharClass::Other:
            break;
        }
        *out_++ = *in_++;
        return true;
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

    Value& NextLiteral() {
        if (count_ == literals_.size()) {
            literals_.emplace_back();
        }
        return literals_[count_++];
    }

    bool Replace(ScannedLiteral&& literal) {
        if (literal.fault != LiteralFault::None) {
            return false;
        }
        *out_++ = MarkOf(literal.value);
        in_ = begin_ + literal.end;
        NextLiteral() = std::move(literal.value);
        return true;
    }

    // A text without a quote inside goes straight into the place of the text that stood there before.
    bool ReplaceText() {
        const char16_t quote = *in_;
        const char16_t* close = std::find(in_ + 1, end_, quote);
        if (close == end_ || (close + 1 < end_ && close[1] == quote)) {
            return Replace(ScanText(text_, in_ - begin_));
        }
        Value& literal = NextLiteral();
        literal.AssignText(QStringView(in_ + 1, close));
        *out_++ = MarkOf(literal);
        in_ = close + 1;
        return true;
    }

    QStringView text_;
    const char16_t* begin_;
    const char16_t* end_;
    const char16_t* in_;
    char16_t* out_;
    char16_t* key_;
    std::vector<Value>& literals_;
    size_t count_ = 0;
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
