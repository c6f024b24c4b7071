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
                               FunctionAt(otherwise.function).form == FunctionForm::Choice;
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
    const FunctionRule& rule = FunctionAt(expression.function);
    if (expression.countsRows) {
        return {QByteArrayLiteral("count(*)")};
    }
    const Expression& operand = *expression.operands[0];
    SqlText value = EmitArgument(operand, rule.arguments[0]);
    std::vector<SqlText> keys;
    if (rule.form == FunctionForm::OrderedAggregate) {
        // The rows' own order decides, not the one in which the store happens to meet them.
        for (const Source* leaf : select_->leaves) {
            if (leaf->table && (!leaf->table->key.empty() || select_->leaves.size() == 1)) {
                const std::vector<SqlText> more = KeyColumns({{leaf->table, leaf->alias, leaf, -1}});
                keys.insert(keys.end(), more.begin(), more.end());
            }
        }
    } else if (rule.result == ResultRule::AsFirst) {
        value = operand.type == FieldType::YesNo ? writer_.IsTrue(value, operand.type)
                                                 : writer_.Collated(value, operand.type);
    }
    SqlText text = writer_.Aggregate(rule, value, operand.type, keys);
    text.stored = value.stored;
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
