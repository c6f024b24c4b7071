#include "layouts/Formula.h"

#include "base/Error.h"
#include "engine/FieldType.h"

#include <QRegularExpression>

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;
using engine::FieldType;

namespace {

constexpr qsizetype longestFormula = 16000;
constexpr int deepestFormula = 30;
constexpr int mostConditions = 200;

[[noreturn]] void ThrowWrong(const QString& what, QStringView formula, qsizetype at) {
    constexpr qsizetype shown = 24;
    const QStringView rest = formula.sliced(std::min(at, formula.size()));
    const QString place = rest.isEmpty() ? u"at its end"_s
                                         : u"at position %1 (\"%2%3\")"_s.arg(at + 1).arg(
                                               rest.first(std::min(shown, rest.size())).toString().simplified(),
                                               rest.size() > shown ? u"..."_s : QString());
    throw Error(static_cast<int>(ErrorNumber::InvalidCall),
                u"The selection formula is wrong %1: %2."_s.arg(place, what), u"Velmora"_s, formula.toString());
}

struct Token {
    // In the order of the groups in the pattern of all tokens.
    enum class Kind { End, Field, Text, Number, Word, Sign };
    Kind kind = Kind::End;
    // Place of its first character.
    qsizetype at = 0;
    // As it is written.
    QStringView text;
    Value number = {};
};

Value ReadNumber(QStringView text, QStringView formula, qsizetype at) {
    const bool isNumber = text.count(u'.') <= 1 &&
                          std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter() || c == u'_'; });
    if (!isNumber) {
        ThrowWrong(u"this is no number"_s, formula, at);
    }
    bool fits = false;
    const Value number = text.contains(u'.') ? Value(text.toDouble(&fits)) : Value(text.toLongLong(&fits));
    if (!fits) {
        ThrowWrong(u"this number is too large"_s, formula, at);
    }
    return number;
}

// The tokens of a formula, the last one an End.
std::vector<Token> Tokenize(QStringView formula) {
    const QRegularExpression pattern(uR"((\{[^}]*\})|("(?:[^"]|"")*+"|'(?:[^']|'')*+')|(\.?[0-9][\pL_.0-9]*))"
                                     uR"(|([\pL_][\pL_0-9]*)|(<>|<=|>=|[<>=(),-]))"_s);
    std::vector<Token> tokens;
    qsizetype at = 0;
    for (;;) {
        while (at < formula.size() && formula[at].isSpace()) {
            ++at;
        }
        if (at == formula.size()) {
            tokens.push_back({Token::Kind::End, at, {}});
            return tokens;
        }
        const auto match =
            pattern.match(formula, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch()) {
            const QChar c = formula[at];
            ThrowWrong(c == u'{'                 ? u"the field's closing \"}\" is missing"_s
                       : c == u'"' || c == u'\'' ? u"the text's closing quote is missing"_s
                                                 : u"a formula has no \"%1\""_s.arg(c),
                       formula, at);
        }
        Token token{static_cast<Token::Kind>(match.lastCapturedIndex()), at, match.capturedView()};
        if (token.kind == Token::Kind::Number) {
            token.number = ReadNumber(token.text, formula, at);
        }
        tokens.push_back(std::move(token));
        at = match.capturedEnd();
    }
}

class FormulaParser {
public:
    FormulaParser(QStringView text, const FieldScope& scope) : text_(text), scope_(scope), tokens_(Tokenize(text)) {}

    Formula Parse() {
        if (Peek().kind == Token::Kind::End) {
            return {};
        }
        Formula formula = ParseOr(0);
        if (Peek().kind != Token::Kind::End) {
            Fail(At(u")") ? u"this \")\" closes nothing"_s : u"And or Or is missing here"_s);
        }
        return formula;
    }

private:
    const Token& Peek() const { return tokens_[next_]; }
    const Token& Take() { return tokens_[next_++]; }
    // A word, whatever its letter case, or a sign.
    bool At(QStringView mark) const {
        const bool isMark = Peek().kind == Token::Kind::Word || Peek().kind == Token::Kind::Sign;
        return isMark && Peek().text.compare(mark, Qt::CaseInsensitive) == 0;
    }
    bool TakeMark(QStringView mark) {
        const bool found = At(mark);
        next_ += found ? 1 : 0;
        return found;
    }
    void Expect(QStringView mark, const QString& what) {
        if (!TakeMark(mark)) {
            Fail(what);
        }
    }
    [[noreturn]] void Fail(const QString& what) const { FailAt(what, Peek().at); }
    [[noreturn]] void FailAt(const QString& what, qsizetype at) const { ThrowWrong(what, text_, at); }

    // Conditions between one and the same word, as one node.
    template <typename ParsePart>
    Formula ParseSeries(QStringView word, Formula::Kind kind, ParsePart parsePart) {
        Formula first = parsePart();
        if (!At(word)) {
            return first;
        }
        Formula series;
        series.kind = kind;
        series.parts.push_back(std::move(first));
        while (TakeMark(word)) {
            series.parts.push_back(parsePart());
        }
        return series;
    }

    Formula ParseOr(int level) {
        const auto parseAnd = [&] {
            return ParseSeries(u"And", Formula::Kind::And, [&] { return ParseNot(level + 1); });
        };
        return ParseSeries(u"Or", Formula::Kind::Or, parseAnd);
    }

    Formula ParseNot(int level) {
        if (level > deepestFormula) {
            Fail(u"it nests more than %1 levels deep"_s.arg(deepestFormula));
        }
        if (TakeMark(u"Not")) {
            Formula formula;
            formula.kind = Formula::Kind::Not;
            formula.parts.push_back(ParseNot(level + 1));
            return formula;
        }
        if (TakeMark(u"(")) {
            Formula formula = ParseOr(level);
            Expect(u")", u"the closing \")\" is missing"_s);
            return formula;
        }
        return ParseCondition();
    }

    Formula ParseCondition() {
        if (++conditions_ > mostConditions) {
            Fail(u"it has more than %1 conditions"_s.arg(mostConditions));
        }
        Formula condition;
        const qsizetype at = Peek().at;
        condition.left = ParseOperand();
        if (Peek().kind != Token::Kind::Sign || !QStringView(u"<>=").contains(Peek().text.front())) {
            if (condition.left.Type() != FieldType::YesNo) {
                Fail(u"a comparison (= <> < <= > >=) is missing here"_s);
            }
            condition.kind = Formula::Kind::Flag;
            return condition;
        }
        condition.kind = Formula::Kind::Compare;
        condition.comparison = Take().text.toString();
        condition.right = ParseOperand();
        if (!SameKind(condition.left.Type(), condition.right.Type())) {
            FailAt(u"%1 cannot be compared with %2"_s.arg(engine::Describe(condition.left.Type()),
                                                          engine::Describe(condition.right.Type())),
                   at);
        }
        return condition;
    }

    FormulaOperand ParseOperand() {
        switch (Peek().kind) {
        case Token::Kind::Field:
            return {ParseField(), {}};
        case Token::Kind::Text:
            return {{}, ParseText()};
        case Token::Kind::Number:
            return {{}, Take().number};
        case Token::Kind::Word:
            return {{}, ParseWord()};
        default:
            break;
        }
        if (!TakeMark(u"-")) {
            Fail(u"a field, a value or a date is missing here"_s);
        }
        if (Peek().kind != Token::Kind::Number) {
            Fail(u"a number is missing behind the \"-\""_s);
        }
        const Value number = Take().number;
        return {{}, number.IsInteger() ? Value(-number.ToInteger()) : Value(-number.ToReal())};
    }

    FieldName ParseField() {
        const Token& token = Take();
        const QStringView name = token.text.sliced(1).chopped(1).trimmed();
        const auto field = scope_.Find(name);
        if (!field) {
            FailAt(u"there is no field {%1}; %2"_s.arg(name, scope_.Choices(name)), token.at);
        }
        return *field;
    }

    Value ParseText() {
        const QStringView written = Take().text;
        const QChar quote = written.front();
        return written.sliced(1).chopped(1).toString().replace(QString(2, quote), quote);
    }

    Value ParseWord() {
        const Token& word = Peek();
        if (TakeMark(u"Yes") || TakeMark(u"True")) {
            return true;
        }
        if (TakeMark(u"No") || TakeMark(u"False")) {
            return false;
        }
        if (TakeMark(u"Date")) {
            return ParseDate(word.at);
        }
        Fail(u"\"%1\" means nothing in a formula; a field stands in braces and a text in quotes"_s.arg(word.text));
    }

    Value ParseDate(qsizetype at) {
        const QString form = u"a date is written Date(year, month, day)"_s;
        Expect(u"(", form);
        const int year = ParseDatePart(form);
        Expect(u",", form);
        const int month = ParseDatePart(form);
        Expect(u",", form);
        const int day = ParseDatePart(form);
        Expect(u")", form);
        const auto date = MakeDate(year, month, day);
        if (!date) {
            FailAt(u"there is no such date"_s, at);
        }
        return StartOfDay(*date);
    }

    int ParseDatePart(const QString& form) {
        constexpr qint64 largest = 9999;
        if (!Peek().number.IsInteger()) {
            Fail(form);
        }
        if (Peek().number.ToInteger() > largest) {
            Fail(u"there is no such date"_s);
        }
        return static_cast<int>(Take().number.ToInteger());
    }

    QStringView text_;
    const FieldScope& scope_;
    std::vector<Token> tokens_;
    size_t next_ = 0;
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
        ThrowWrong(u"it is longer than %1 characters"_s.arg(longestFormula), text, 0);
    }
    return FormulaParser(text, scope).Parse();
}

} // namespace velmora::layouts
