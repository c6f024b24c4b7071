#include "engine/FieldType.h"
#include "layouts/formula/Formula.h"
#include "layouts/formula/FormulaError.h"
#include "layouts/formula/FormulaLexer.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;
using engine::FieldType;

namespace {

constexpr qsizetype longestFormula = 16000;
constexpr int deepestFormula = 30;
constexpr int mostConditions = 200;

class FormulaParser {
public:
    FormulaParser(QStringView text, const FieldScope& scope)
        : text_(text), scope_(scope), tokens_(TokenizeFormula(text)) {}

    Formula Parse() {
        if (At(FormulaMark::End)) {
            return {};
        }
        Formula formula = ParseOr();
        if (!At(FormulaMark::End)) {
            Fail(At(FormulaMark::Close) ? u"this \")\" closes nothing"_s : u"And or Or is missing here"_s);
        }
        return formula;
    }

private:
    // One level of nesting while it lives.
    class Level {
    public:
        explicit Level(FormulaParser& parser) : parser_(parser) {
            if (++parser_.level_ > deepestFormula) {
                parser_.Fail(u"it nests more than %1 levels deep"_s.arg(deepestFormula));
            }
        }
        ~Level() { --parser_.level_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        FormulaParser& parser_;
    };

    const FormulaToken& Peek() const { return tokens_[next_]; }
    const FormulaToken& Take() { return tokens_[next_++]; }
    bool At(FormulaMark mark) const { return Peek().mark == mark; }
    bool AtWord(QStringView word) const {
        return At(FormulaMark::Word) && Peek().text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool TakeWord(QStringView word) {
        const bool found = AtWord(word);
        next_ += found ? 1 : 0;
        return found;
    }
    void Expect(FormulaMark mark, const QString& what) {
        if (!At(mark)) {
            Fail(what);
        }
        ++next_;
    }
    [[noreturn]] void Fail(const QString& what) const { FailAt(what, Peek().at); }
    [[noreturn]] void FailAt(const QString& what, qsizetype at) const { throw FormulaError(what, text_, at); }

    // Conditions between one and the same word, as one node.
    template <typename ParsePart>
    Formula ParseSeries(QStringView word, Formula::Kind kind, ParsePart parsePart) {
        Formula first = parsePart();
        if (!AtWord(word)) {
            return first;
        }
        Formula series;
        series.kind = kind;
        series.parts.push_back(std::move(first));
        while (TakeWord(word)) {
            series.parts.push_back(parsePart());
        }
        return series;
    }

    Formula ParseOr() {
        return ParseSeries(u"Or", Formula::Kind::Or,
                           [this] { return ParseSeries(u"And", Formula::Kind::And, [this] { return ParseNot(); }); });
    }

    Formula ParseNot() {
        const Level level(*this);
        if (TakeWord(u"Not")) {
            Formula formula;
            formula.kind = Formula::Kind::Not;
            formula.parts.push_back(ParseNot());
            return formula;
        }
        if (At(FormulaMark::Open)) {
            ++next_;
            Formula formula = ParseOr();
            Expect(FormulaMark::Close, u"the closing \")\" is missing"_s);
            return formula;
        }
        return ParseCondition();
    }

    static std::optional<Formula::Comparison> ComparisonOf(FormulaMark mark) {
        switch (mark) {
        case FormulaMark::Equal:
            return Formula::Comparison::Equal;
        case FormulaMark::NotEqual:
            return Formula::Comparison::NotEqual;
        case FormulaMark::Less:
            return Formula::Comparison::Less;
        case FormulaMark::LessEqual:
            return Formula::Comparison::LessEqual;
        case FormulaMark::Greater:
            return Formula::Comparison::Greater;
        case FormulaMark::GreaterEqual:
            return Formula::Comparison::GreaterEqual;
        default:
            return std::nullopt;
        }
    }

    Formula ParseCondition() {
        if (++conditions_ > mostConditions) {
            Fail(u"it has more than %1 conditions"_s.arg(mostConditions));
        }
        Formula condition;
        const qsizetype at = Peek().at;
        condition.left = ParseOperand();
        const auto comparison = ComparisonOf(Peek().mark);
        if (!comparison) {
            if (condition.left.Type() != FieldType::YesNo) {
                Fail(u"a comparison (= <> < <= > >=) is missing here"_s);
            }
            condition.kind = Formula::Kind::Flag;
            return condition;
        }
        ++next_;
        condition.kind = Formula::Kind::Compare;
        condition.comparison = *comparison;
        condition.right = ParseOperand();
        if (!SameKind(condition.left.Type(), condition.right.Type())) {
            FailAt(u"%1 cannot be compared with %2"_s.arg(engine::Describe(condition.left.Type()),
                                                          engine::Describe(condition.right.Type())),
                   at);
        }
        return condition;
    }

    FormulaOperand ParseOperand() {
        const FormulaToken& token = Peek();
        switch (token.mark) {
        case FormulaMark::Field:
            return ParseField();
        case FormulaMark::Value:
            return {{}, Take().value};
        case FormulaMark::Minus:
            return {{}, ParseNegative()};
        case FormulaMark::Word:
            return {{}, ParseWord()};
        default:
            Fail(u"a field, a value or a date is missing here"_s);
        }
    }

    FormulaOperand ParseField() {
        const FormulaToken& token = Take();
        const auto field = scope_.Find(token.text);
        if (!field) {
            FailAt(u"there is no field {%1}; %2"_s.arg(token.text, scope_.Choices(token.text)), token.at);
        }
        return {field, {}};
    }

    Value ParseNegative() {
        ++next_;
        const Value& number = Peek().value;
        if (!At(FormulaMark::Value) || number.IsText()) {
            Fail(u"a number is missing behind the \"-\""_s);
        }
        ++next_;
        return number.IsInteger() ? Value(-number.ToInteger()) : Value(-number.ToReal());
    }

    Value ParseWord() {
        const FormulaToken& word = Peek();
        if (TakeWord(u"Yes") || TakeWord(u"True")) {
            return true;
        }
        if (TakeWord(u"No") || TakeWord(u"False")) {
            return false;
        }
        if (TakeWord(u"Date")) {
            return ParseDate(word.at);
        }
        Fail(u"\"%1\" means nothing in a formula; a field stands in braces and a text in quotes"_s.arg(word.text));
    }

    Value ParseDate(qsizetype at) {
        const QString form = u"a date is written Date(year, month, day)"_s;
        Expect(FormulaMark::Open, form);
        const int year = ParseDatePart(form);
        Expect(FormulaMark::Comma, form);
        const int month = ParseDatePart(form);
        Expect(FormulaMark::Comma, form);
        const int day = ParseDatePart(form);
        Expect(FormulaMark::Close, form);
        const auto date = MakeDate(year, month, day);
        if (!date) {
            FailAt(u"there is no such date"_s, at);
        }
        return StartOfDay(*date);
    }

    int ParseDatePart(const QString& form) {
        constexpr qint64 largest = 9999;
        if (!At(FormulaMark::Value) || !Peek().value.IsInteger()) {
            Fail(form);
        }
        if (Peek().value.ToInteger() > largest) {
            Fail(u"there is no such date"_s);
        }
        return static_cast<int>(Take().value.ToInteger());
    }

    QStringView text_;
    const FieldScope& scope_;
    std::vector<FormulaToken> tokens_;
    size_t next_ = 0;
    int level_ = 0;
    int conditions_ = 0;
};

void CollectDates(const Formula& formula, std::vector<DateTime>& dates) {
    for (const FormulaOperand* operand : {&formula.left, &formula.right}) {
        if (const auto date = operand->value.IsDateTime() ? operand->value.ToDateTime() : std::nullopt) {
            dates.push_back(*date);
        }
    }
    for (const Formula& part : formula.parts) {
        CollectDates(part, dates);
    }
}

} // namespace

FieldType FormulaOperand::Type() const {
    return field ? field->type : engine::TypeOfValue(value);
}

std::vector<DateTime> Formula::Dates() const {
    std::vector<DateTime> dates;
    CollectDates(*this, dates);
    return dates;
}

bool SameKind(FieldType left, FieldType right) {
    return left == right || left == FieldType::Unknown || right == FieldType::Unknown ||
           (engine::IsNumber(left) && engine::IsNumber(right));
}

Formula ParseFormula(QStringView text, const FieldScope& scope) {
    if (text.size() > longestFormula) {
        throw FormulaError(u"it is longer than %1 characters"_s.arg(longestFormula), text, 0);
    }
    return FormulaParser(text, scope).Parse();
}

} // namespace velmora::layouts
