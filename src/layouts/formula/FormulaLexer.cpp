#include "layouts/formula/FormulaLexer.h"

#include "layouts/formula/FormulaError.h"

#include <array>
#include <cmath>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool IsLetter(QChar c) {
    return c.isLetter() || c == u'_';
}

class FormulaLexer {
public:
    explicit FormulaLexer(QStringView formula) : formula_(formula) {}

    std::vector<FormulaToken> Run() {
        std::vector<FormulaToken> tokens;
        for (;;) {
            while (at_ < formula_.size() && formula_[at_].isSpace()) {
                ++at_;
            }
            tokens.push_back(Next());
            if (tokens.back().mark == FormulaMark::End) {
                return tokens;
            }
        }
    }

private:
    [[noreturn]] void Fail(const QString& what, qsizetype at) const { throw FormulaError(what, formula_, at); }

    FormulaToken Next() {
        if (at_ >= formula_.size()) {
            return {FormulaMark::End, formula_.size(), {}, {}};
        }
        const QChar c = formula_[at_];
        if (c == u'{') {
            return Field();
        }
        if (c == u'"' || c == u'\'') {
            return Text();
        }
        if (IsDigit(c) || (c == u'.' && at_ + 1 < formula_.size() && IsDigit(formula_[at_ + 1]))) {
            return Number();
        }
        if (IsLetter(c)) {
            return Word();
        }
        return Mark();
    }

    FormulaToken Field() {
        const qsizetype start = at_;
        const qsizetype end = formula_.indexOf(u'}', start);
        if (end < 0) {
            Fail(u"the field's closing \"}\" is missing"_s, start);
        }
        at_ = end + 1;
        return {FormulaMark::Field, start, formula_.sliced(start + 1, end - start - 1).trimmed(), {}};
    }

    FormulaToken Text() {
        const qsizetype start = at_;
        const QChar quote = formula_[start];
        QString text;
        for (qsizetype i = start + 1; i < formula_.size(); ++i) {
            if (formula_[i] != quote) {
                text += formula_[i];
            } else if (i + 1 < formula_.size() && formula_[i + 1] == quote) {
                text += quote;
                ++i;
            } else {
                at_ = i + 1;
                return {FormulaMark::Value, start, formula_.sliced(start, at_ - start), text};
            }
        }
        Fail(u"the text's closing quote is missing"_s, start);
    }

    qsizetype BehindDigits(qsizetype i) const {
        while (i < formula_.size() && IsDigit(formula_[i])) {
            ++i;
        }
        return i;
    }

    FormulaToken Number() {
        const qsizetype start = at_;
        qsizetype end = BehindDigits(start);
        const bool whole = end >= formula_.size() || formula_[end] != u'.';
        if (!whole) {
            end = BehindDigits(end + 1);
        }
        if (end < formula_.size() && (IsLetter(formula_[end]) || formula_[end] == u'.')) {
            Fail(u"this is no number"_s, start);
        }
        at_ = end;
        const QStringView digits = formula_.sliced(start, end - start);
        bool fits = false;
        const Value value = whole ? Value(digits.toLongLong(&fits)) : Value(digits.toDouble(&fits));
        if (!fits || (value.IsReal() && !std::isfinite(value.ToReal()))) {
            Fail(u"this number is too large"_s, start);
        }
        return {FormulaMark::Value, start, digits, value};
    }

    FormulaToken Word() {
        const qsizetype start = at_;
        while (at_ < formula_.size() && (IsLetter(formula_[at_]) || IsDigit(formula_[at_]))) {
            ++at_;
        }
        return {FormulaMark::Word, start, formula_.sliced(start, at_ - start), {}};
    }

    FormulaToken Mark() {
        struct Sign {
            QStringView text;
            FormulaMark mark;
        };
        // The longer ones first.
        static constexpr std::array signs = std::to_array<Sign>({{u"<>", FormulaMark::NotEqual},
                                                                 {u"<=", FormulaMark::LessEqual},
                                                                 {u">=", FormulaMark::GreaterEqual},
                                                                 {u"<", FormulaMark::Less},
                                                                 {u">", FormulaMark::Greater},
                                                                 {u"=", FormulaMark::Equal},
                                                                 {u"(", FormulaMark::Open},
                                                                 {u")", FormulaMark::Close},
                                                                 {u",", FormulaMark::Comma},
                                                                 {u"-", FormulaMark::Minus}});
        for (const Sign& sign : signs) {
            if (formula_.sliced(at_).startsWith(sign.text)) {
                const qsizetype start = at_;
                at_ += sign.text.size();
                return {sign.mark, start, formula_.sliced(start, sign.text.size()), {}};
            }
        }
        Fail(u"a formula has no \"%1\""_s.arg(formula_[at_]), at_);
    }

    QStringView formula_;
    qsizetype at_ = 0;
};

} // namespace

std::vector<FormulaToken> TokenizeFormula(QStringView formula) {
    return FormulaLexer(formula).Run();
}

} // namespace velmora::layouts
