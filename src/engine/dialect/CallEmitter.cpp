#include "engine/dialect/Emitter.h"
#include "engine/dialect/Types.h"

namespace velmora::engine::dialect {

SqlText Emitter::EmitCall(const Expression& expression) {
    const FunctionRule& rule = FunctionAt(expression.function);
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
    return CallText(rule.storeName, arguments);
}

SqlText Emitter::EmitArgument(const Expression& expression, ArgumentKind kind) {
    SqlText value = Emit(expression);
    switch (kind) {
    case ArgumentKind::Condition:
        return Truth(value, expression.type);
    case ArgumentKind::Text:
        return AsText(value, expression.type);
    case ArgumentKind::Number:
        return AsNumber(value, expression.type);
    case ArgumentKind::Whole:
        return ForField(value, expression.type, FieldType::Integer);
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
    SqlText text{"CASE", Binds::Whole, 2, false};
    const auto append = [&](const char* word, const SqlText& part) {
        text.text += word + part.text;
        constexpr int besides = 7;
        text.pending = std::max(text.pending, part.pending + besides);
        text.stored = text.stored || part.stored;
    };
    const auto result = [&](const Expression& operand) { return Operand(operand, expression.type); };
    const Expression* choice = &expression;
    for (;;) {
        SqlText condition = EmitCondition(*choice->operands[0]);
        condition.stored = false;
        append(" WHEN ", condition);
        append(" THEN ", result(*choice->operands[1]));
        const Expression& otherwise = *choice->operands[2];
        const bool continues = otherwise.kind == Expression::Kind::Call && otherwise.type == expression.type &&
                               FunctionAt(otherwise.function).form == FunctionForm::Choice;
        if (!continues) {
            append(" ELSE ", result(otherwise));
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
    SqlText text = CallText("coalesce", std::initializer_list<SqlText>{value, other});
    text.stored = value.stored || other.stored;
    return text;
}

SqlText Emitter::EmitAggregate(const Expression& expression) {
    const FunctionRule& rule = FunctionAt(expression.function);
    if (expression.countsRows) {
        return {QByteArrayLiteral("count(*)"), Binds::Whole, 4, false};
    }
    const Expression& operand = *expression.operands[0];
    std::vector<SqlText> arguments{EmitArgument(operand, rule.arguments[0])};
    bool stored = arguments.front().stored;
    if (rule.form == FunctionForm::OrderedAggregate) {
        // The rows' own order decides, not the one in which the store happens to meet them.
        for (const Source* leaf : select_->leaves) {
            if (!leaf->table || (leaf->table->key.empty() && select_->leaves.size() > 1)) {
                continue;
            }
            for (SqlText& key : KeyColumns({{leaf->table, leaf->alias, leaf, -1}})) {
                arguments.push_back(std::move(key));
            }
        }
    } else if (rule.result == ResultRule::AsFirst && operand.type == FieldType::YesNo) {
        arguments.front() = Truth(arguments.front(), operand.type);
        stored = false;
    } else if (rule.result == ResultRule::AsFirst) {
        arguments.front() = Collated(arguments.front(), operand.type);
    }
    SqlText text = CallText(rule.storeName, arguments);
    text.stored = stored;
    return text;
}

} // namespace velmora::engine::dialect
