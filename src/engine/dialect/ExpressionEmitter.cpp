#include "engine/dialect/Emitter.h"
#include "engine/dialect/LikePattern.h"

#include <array>

namespace velmora::engine::dialect {

namespace {

struct OperatorText {
    Operator op;
    const char* text;
    Binds binds;
};

constexpr std::array operators = std::to_array<OperatorText>({
    {Operator::Add, "+", Binds::Sum},
    {Operator::Subtract, "-", Binds::Sum},
    {Operator::Multiply, "*", Binds::Product},
    {Operator::Divide, "/", Binds::Product},
    {Operator::Modulo, "%", Binds::Product},
    {Operator::Concatenate, "||", Binds::Join},
    {Operator::Equal, "=", Binds::Equality},
    {Operator::NotEqual, "<>", Binds::Equality},
    {Operator::Less, "<", Binds::Order},
    {Operator::LessEqual, "<=", Binds::Order},
    {Operator::Greater, ">", Binds::Order},
    {Operator::GreaterEqual, ">=", Binds::Order},
});

SqlText Combine(Operator op, const SqlText& left, const SqlText& right) {
    const OperatorText& entry = operators[static_cast<size_t>(op)];
    return Infix(left, entry.text, right, entry.binds);
}

} // namespace

SqlText Emitter::Emit(const Expression& expression) {
    using Kind = Expression::Kind;
    switch (expression.kind) {
    case Kind::Literal:
        return EmitLiteral(expression);
    case Kind::Flag:
        return writer_.Flag(expression.value.ToBool());
    case Kind::Null:
        return {QByteArrayLiteral("NULL")};
    case Kind::Name:
        return EmitName(expression);
    case Kind::Negate:
        return Negative(writer_.AsNumber(Emit(*expression.operands[0]), expression.operands[0]->type));
    case Kind::Binary:
        return IsComparison(expression.op) ? EmitComparison(expression) : EmitArithmetic(expression);
    case Kind::Not:
        return Negated(EmitCondition(*expression.operands[0]));
    case Kind::And:
    case Kind::Or:
        return EmitJunction(expression, 0, expression.operands.size());
    case Kind::Between:
        return EmitBetween(expression);
    case Kind::In:
        return EmitIn(expression);
    case Kind::Like:
        return EmitLike(expression);
    case Kind::IsNull:
        return EmitNullTest(expression);
    case Kind::Exists:
    case Kind::Subquery: {
        const bool exists = expression.kind == Kind::Exists;
        const QByteArray query = EmitQuery(*expression.query, {exists ? Use::Exists : Use::Value});
        return {(exists ? "EXISTS (" : "(") + query + ')', Binds::Whole, !exists};
    }
    case Kind::Call:
        return EmitCall(expression);
    }
    return {};
}

SqlText Emitter::EmitCondition(const Expression& expression) {
    return writer_.IsTrue(Emit(expression), expression.type);
}

SqlText Emitter::EmitLiteral(const Expression& expression) {
    Binding binding;
    binding.type = expression.type;
    if (expression.literal < 0) {
        binding.source = Binding::Source::Constant;
        binding.constant = expression.value;
        return {Bind(std::move(binding))};
    }
    binding.source = Binding::Source::Literal;
    binding.index = expression.literal;
    return {Place(literalNumbers_[expression.literal], std::move(binding))};
}

SqlText Emitter::EmitName(const Expression& expression) {
    if (expression.source) {
        const Source& source = *expression.source;
        const QByteArray column = source.table ? Quoted(source.columns[static_cast<size_t>(expression.column)].name)
                                               : "\"c" + QByteArray::number(expression.column) + '"';
        return {Quoted(source.sqlAlias) + '.' + column, Binds::Whole, true};
    }
    Binding binding;
    binding.source = Binding::Source::Parameter;
    binding.index = expression.parameter;
    binding.type = expression.type;
    return {Place(parameterNumbers_[expression.parameter], std::move(binding))};
}

// And, Or. A long row of operands becomes a balanced tree, which meets no limit on the depth of a tree.
SqlText Emitter::EmitJunction(const Expression& expression, size_t from, size_t to) {
    const bool all = expression.kind == Expression::Kind::And;
    const Binds binds = all ? Binds::And : Binds::Or;
    const QByteArray word = all ? "AND" : "OR";
    constexpr size_t flat = 16;
    if (to - from > flat) {
        const size_t middle = from + (to - from) / 2;
        const SqlText left = EmitJunction(expression, from, middle);
        return Infix(left, word, EmitJunction(expression, middle, to), binds);
    }
    SqlText text = EmitCondition(*expression.operands[from]);
    for (size_t i = from + 1; i < to; ++i) {
        text = Infix(text, word, EmitCondition(*expression.operands[i]), binds);
    }
    return text;
}

SqlText Emitter::EmitComparison(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    if (left.type == FieldType::YesNo || right.type == FieldType::YesNo) {
        return EmitFlagComparison(expression);
    }
    const SqlText first = Emit(left);
    SqlText second = Emit(right);
    const auto isText = [](FieldType type) { return type == FieldType::Text || type == FieldType::Unknown; };
    if (isText(left.type) && isText(right.type)) {
        second = writer_.Collated(second, FieldType::Text);
    }
    return Combine(expression.op, first, second);
}

// Yes/no values compare by their truth, never by the number they are stored as.
SqlText Emitter::EmitFlagComparison(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    const bool equality = expression.op == Operator::Equal || expression.op == Operator::NotEqual;
    const bool leftFlag = left.kind == Expression::Kind::Flag;
    if (!equality || (!leftFlag && right.kind != Expression::Kind::Flag)) {
        const SqlText first = EmitCondition(left);
        return Combine(expression.op, first.Within(Binds::Whole), EmitCondition(right).Within(Binds::Whole));
    }
    const Expression& flag = leftFlag ? left : right;
    const Expression& tested = leftFlag ? right : left;
    const SqlText value = Emit(tested);
    const bool wantsTrue = flag.value.ToBool() == (expression.op == Operator::Equal);
    return wantsTrue ? writer_.IsTrue(value, tested.type) : writer_.IsFalse(value, tested.type);
}

SqlText Emitter::EmitArithmetic(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    if (expression.op == Operator::Concatenate) {
        return EmitConcatenation(expression);
    }
    const SqlText first = Emit(left);
    const SqlText second = Emit(right);
    const auto either = [&](FieldType type) { return left.type == type || right.type == type; };
    const bool sum = expression.op == Operator::Add;
    if (sum && left.type == FieldType::Text && right.type == FieldType::Text) {
        return Combine(Operator::Concatenate, first, second);
    }
    if (sum || expression.op == Operator::Subtract) {
        if (!sum && left.type == FieldType::DateTime && right.type == FieldType::DateTime) {
            return writer_.DaysBetween(first, second);
        }
        if (either(FieldType::Unknown) || either(FieldType::Text)) {
            const auto operand = [&](const SqlText& value, FieldType type) {
                return type == FieldType::YesNo ? writer_.AsNumber(value, type) : value;
            };
            return sum ? writer_.SumOfAny(operand(first, left.type), operand(second, right.type))
                       : writer_.DifferenceOfAny(operand(first, left.type), operand(second, right.type));
        }
        if (either(FieldType::DateTime)) {
            const bool dateFirst = left.type == FieldType::DateTime;
            const SqlText days = dateFirst ? writer_.AsNumber(second, right.type) : writer_.AsNumber(first, left.type);
            return writer_.AddDays(dateFirst ? first : second, sum ? days : Negative(days));
        }
    }
    const SqlText leftNumber = writer_.AsNumber(first, left.type);
    const SqlText rightNumber = writer_.AsNumber(second, right.type);
    if (expression.op == Operator::Divide) {
        return writer_.Quotient(leftNumber, rightNumber);
    }
    if (expression.op == Operator::Modulo) {
        const auto whole = [&](const SqlText& number, FieldType type) {
            return writer_.AsWhole(number, type == FieldType::YesNo ? FieldType::Real : type);
        };
        return writer_.Remainder(whole(leftNumber, left.type), whole(rightNumber, right.type));
    }
    return Combine(expression.op, leftNumber, rightNumber);
}

// "&": an empty value joins as "".
SqlText Emitter::EmitConcatenation(const Expression& expression) {
    const auto part = [&](const Expression& operand) {
        const SqlText text = writer_.AsText(Emit(operand), operand.type);
        const bool neverEmpty = operand.kind == Expression::Kind::Literal ||
                                (operand.kind == Expression::Kind::Binary && operand.op == Operator::Concatenate);
        return neverEmpty ? text : CallText("coalesce", {text, {QByteArrayLiteral("''")}});
    };
    const SqlText first = part(*expression.operands[0]);
    return Combine(Operator::Concatenate, first, part(*expression.operands[1]));
}

SqlText Emitter::EmitBetween(const Expression& expression) {
    std::array<SqlText, 3> parts;
    bool flags = false;
    bool texts = true;
    for (const ExpressionPtr& operand : expression.operands) {
        flags = flags || operand->type == FieldType::YesNo;
        texts = texts && (operand->type == FieldType::Text || operand->type == FieldType::Unknown);
    }
    for (size_t i = 0; i < parts.size(); ++i) {
        const Expression& operand = *expression.operands[i];
        parts[i] = flags ? EmitCondition(operand) : Emit(operand);
        if (texts && i > 0) {
            parts[i] = writer_.Collated(parts[i], FieldType::Text);
        }
        parts[i] = parts[i].Within(Binds::Sum);
    }
    const QByteArray word = expression.negated ? " NOT BETWEEN " : " BETWEEN ";
    return {parts[0].text + word + parts[1].text + " AND " + parts[2].text, Binds::Equality};
}

SqlText Emitter::EmitIn(const Expression& expression) {
    const auto isText = [](FieldType type) { return type == FieldType::Text || type == FieldType::Unknown; };
    const FieldType members = expression.query ? expression.query->types.front() : FieldType::Unknown;
    bool flags = members == FieldType::YesNo;
    bool texts = isText(members);
    for (const ExpressionPtr& operand : expression.operands) {
        flags = flags || operand->type == FieldType::YesNo;
        texts = texts && isText(operand->type);
    }
    const Expression& tested = *expression.operands.front();
    SqlText value = flags ? EmitCondition(tested) : Emit(tested);
    value = (texts ? writer_.Collated(value, FieldType::Text) : value).Within(Binds::Order);
    SqlText text{value.text + (expression.negated ? " NOT IN (" : " IN ("), Binds::Equality};
    if (expression.query) {
        SelectOptions options{Use::Members};
        options.truth = flags;
        text.text += EmitQuery(*expression.query, options);
    }
    for (size_t i = 1; i < expression.operands.size(); ++i) {
        const Expression& operand = *expression.operands[i];
        text.text += (i == 1 ? "" : ", ") + (flags ? EmitCondition(operand) : Emit(operand)).text;
    }
    text.text += ')';
    return text;
}

SqlText Emitter::EmitLike(const Expression& expression) {
    const Expression& tested = *expression.operands[0];
    const Expression& pattern = *expression.operands[1];
    const SqlText value = writer_.AsText(Emit(tested), tested.type);
    SqlText match = writer_.Like(value, writer_.AsText(Emit(pattern), pattern.type));
    if (expression.negated) {
        return Negated(match);
    }
    const bool field = tested.source && tested.type == FieldType::Text &&
                       tested.source->columns[static_cast<size_t>(tested.column)].base >= 0;
    if (!field || pattern.kind != Expression::Kind::Literal || pattern.type != FieldType::Text) {
        return match;
    }
    // The texts that begin as the pattern does are one range of an index on the field.
    const std::optional<LikeRange> range = RangeOfLike(pattern.value.ToText());
    if (!range) {
        return match;
    }
    const auto bound = [&](const QString& text) {
        Binding binding;
        binding.source = Binding::Source::Constant;
        binding.constant = text;
        binding.type = FieldType::Text;
        return writer_.Collated({Bind(std::move(binding))}, FieldType::Text);
    };
    const SqlText low = Combine(Operator::GreaterEqual, value, bound(range->from));
    const SqlText high = Combine(Operator::Less, value, bound(range->below));
    return Infix(Infix(low, "AND", high, Binds::And), "AND", match, Binds::And);
}

SqlText Emitter::EmitNullTest(const Expression& expression) {
    const SqlText value = Emit(*expression.operands[0]).Within(Binds::Order);
    return {value.text + (expression.negated ? " IS NOT NULL" : " IS NULL"), Binds::Equality};
}

SqlText Emitter::EmitCall(const Expression& expression) {
    const FunctionRule& rule = *expression.function;
    switch (rule.form) {
    case FunctionForm::Choice:
        return EmitChoice(expression);
    case FunctionForm::Default:
        return EmitDefault(expression);
    case FunctionForm::TestNull:
        return EmitNullTest(expression);
    case FunctionForm::Aggregate:
    case FunctionForm::OrderedAggregate:
        return EmitAggregate(expression);
    case FunctionForm::Call:
        break;
    }
    std::vector<SqlText> arguments;
    for (size_t i = 0; i < expression.operands.size(); ++i) {
        arguments.push_back(EmitArgument(*expression.operands[i], rule.arguments[i]));
    }
    return writer_.Call(rule, arguments);
}

SqlText Emitter::EmitArgument(const Expression& expression, ArgumentKind kind) {
    SqlText value = Emit(expression);
    switch (kind) {
    case ArgumentKind::Condition:
        return writer_.IsTrue(value, expression.type);
    case ArgumentKind::Text:
        return writer_.AsText(value, expression.type);
    case ArgumentKind::Number:
        return writer_.AsNumber(value, expression.type);
    case ArgumentKind::Whole:
        return writer_.AsWhole(value, expression.type);
    case ArgumentKind::Any:
    case ArgumentKind::Date:
    case ArgumentKind::NumberOrDate:
    case ArgumentKind::Interval:
        break;
    }
    return value;
}

// IIf. One within the other's last place continues the same CASE.
SqlText Emitter::EmitChoice(const Expression& expression) {
    SqlText text{"CASE"};
    const auto append = [&](const char* word, const Expression& operand) {
        const SqlText result = Operand(operand, expression.type);
        text.text += word + result.text;
        text.stored = text.stored || result.stored;
    };
    const Expression* choice = &expression;
    for (;;) {
        text.text += " WHEN " + EmitCondition(*choice->operands[0]).text;
        append(" THEN ", *choice->operands[1]);
        const Expression& otherwise = *choice->operands[2];
        const bool continues = otherwise.kind == Expression::Kind::Call && otherwise.type == expression.type &&
                               otherwise.function->form == FunctionForm::Choice;
        if (!continues) {
            append(" ELSE ", otherwise);
            text.text += " END";
            return text;
        }
        choice = &otherwise;
    }
}

// Nz. Without a second argument an empty text, or 0.
SqlText Emitter::EmitDefault(const Expression& expression) {
    const Expression& first = *expression.operands[0];
    const SqlText value = Operand(first, expression.type);
    SqlText other;
    if (expression.operands.size() > 1) {
        other = Operand(*expression.operands[1], expression.type);
    } else {
        const bool number = IsNumber(first.type) || first.type == FieldType::YesNo;
        other.text = number ? "0" : "''";
    }
    SqlText text = CallText("coalesce", {value, other});
    text.stored = value.stored || other.stored;
    return text;
}

SqlText Emitter::EmitAggregate(const Expression& expression) {
    const FunctionRule& rule = *expression.function;
    if (expression.countsRows) {
        return {QByteArrayLiteral("count(*)")};
    }
    const Expression& operand = *expression.operands[0];
    const SqlText value = EmitArgument(operand, rule.arguments[0]);
    std::vector<SqlText> arguments{value};
    if (rule.form == FunctionForm::OrderedAggregate) {
        // The rows' own order decides, not the one in which the store happens to meet them.
        for (const Source* leaf : select_->leaves) {
            if (leaf->table && (!leaf->table->key.empty() || select_->leaves.size() == 1)) {
                const std::vector<SqlText> keys = KeyColumns({{leaf->table, leaf->alias, leaf, -1}});
                arguments.insert(arguments.end(), keys.begin(), keys.end());
            }
        }
    } else if (rule.result == ResultRule::AsFirst) {
        arguments = {operand.type == FieldType::YesNo ? writer_.IsTrue(value, operand.type)
                                                      : writer_.Collated(value, operand.type)};
    }
    SqlText text = writer_.Call(rule, arguments);
    text.stored = arguments.front().stored;
    return text;
}

SqlText Emitter::Convert(const SqlText& value, FieldType from, FieldType to) const {
    if (from == to || to == FieldType::Unknown) {
        return value;
    }
    if (from == FieldType::Unknown) {
        return {value.text, value.binds, true};
    }
    return to == FieldType::Text ? writer_.AsText(value, from) : writer_.AsNumber(value, from);
}

SqlText Emitter::ForField(const SqlText& value, FieldType from, FieldType field) const {
    switch (field) {
    case FieldType::YesNo:
        return writer_.IsTrue(value, from);
    case FieldType::Integer:
        return writer_.AsWhole(value, from);
    case FieldType::Real:
        return writer_.AsNumber(value, from);
    case FieldType::Text:
        return writer_.AsText(value, from);
    case FieldType::DateTime:
        return writer_.AsMoment(value, from);
    case FieldType::Unknown:
        break;
    }
    return value;
}

} // namespace velmora::engine::dialect
