#include "engine/dialect/Compiler.h"
#include "engine/dialect/Literals.h"

#include <algorithm>

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

class ShapeScanner {
public:
    ShapeScanner(QStringView text, TextShape& shape)
        : text_(text), out_(reinterpret_cast<char16_t*>(shape.key.data())), literals_(shape.literals) {}

    // False for a text that only the compiler can judge.
    bool Run() {
        while (at_ < text_.size()) {
            const char16_t c = text_[at_].unicode();
            switch (ClassOf(c)) {
            case CharClass::Word:
                CopyWord();
                break;
            case CharClass::Other:
            case CharClass::Blank:
                Copy(c);
                break;
            case CharClass::Digit:
                if (!Replace(ScanNumber(text_, at_))) {
                    return false;
                }
                break;
            case CharClass::Dot:
                if (!PointStartsNumber(text_, at_)) {
                    Copy(c);
                } else if (!Replace(ScanNumber(text_, at_))) {
                    return false;
                }
                break;
            case CharClass::Quote:
                if (!Replace(ScanText(text_, at_))) {
                    return false;
                }
                break;
            case CharClass::Hash:
                if (!Replace(ScanDate(text_, at_))) {
                    return false;
                }
                break;
            case CharClass::Bracket:
                if (!CopyBracket()) {
                    return false;
                }
                break;
            case CharClass::Control:
                return false;
            }
        }
        return true;
    }

    qsizetype KeySize() const { return size_; }

private:
    void Copy(char16_t c) {
        out_[size_++] = c;
        ++at_;
    }
    void CopyWord() {
        do {
            Copy(text_[at_].unicode());
        } while (at_ < text_.size() && IsWordPart(text_[at_].unicode()));
    }
    bool CopyBracket() {
        while (at_ < text_.size()) {
            const char16_t c = text_[at_].unicode();
            if (c < 32) {
                return false;
            }
            Copy(c);
            if (c == u']') {
                return true;
            }
        }
        return false;
    }
    bool Replace(ScannedLiteral&& literal) {
        if (literal.fault != LiteralFault::None) {
            return false;
        }
        out_[size_++] = MarkOf(literal.value);
        at_ = literal.end;
        literals_.push_back(std::move(literal.value));
        return true;
    }

    QStringView text_;
    char16_t* out_;
    std::vector<Value>& literals_;
    qsizetype at_ = 0;
    qsizetype size_ = 0;
};

} // namespace

void ScanShape(QStringView text, TextShape& shape) {
    shape.literals.clear();
    shape.key.resize(text.size());
    ShapeScanner scanner(text, shape);
    shape.recognised = scanner.Run();
    shape.key.resize(shape.recognised ? scanner.KeySize() : 0);
}

} // namespace velmora::engine::dialect
