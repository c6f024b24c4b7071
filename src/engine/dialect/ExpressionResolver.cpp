#include "engine/dialect/FunctionTable.h"
#include "engine/dialect/LikePattern.h"
#include "engine/dialect/Resolver.h"

#include <algorithm>

namespace velmora::engine::dialect {

void Resolver::ResolveExpression(Expression& expression, const Scope& scope) {
    using Kind = Expression::Kind;
    switch (expression.kind) {
    case Kind::Literal:
    case Kind::Flag:
        expression.type = TypeOfValue(expression.value);
        return;
    case Kind::Null:
        return;
    case Kind::Name:
        ResolveName(expression, scope);
        return;
    case Kind::Call:
        ResolveCall(expression, scope);
        return;
    case Kind::In:
        ResolveIn(expression, scope);
        return;
    case Kind::Exists:
    case Kind::Subquery:
        ResolveSubquery(expression, scope);
        return;
    default:
        ResolveOperands(expression, scope);
    }
}

void Resolver::ResolveCondition(Expression& expression, const Scope& scope) {
    ResolveExpression(expression, scope);
    CheckCondition(expression);
}

void Resolver::CheckCondition(const Expression& expression) const {
    if (expression.type == FieldType::Text || expression.type == FieldType::DateTime) {
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("A condition is expected, not %1").arg(Describe(expression.type)), expression.at);
    }
}

void Resolver::ResolveOperands(Expression& expression, const Scope& scope) {
    using Kind = Expression::Kind;
    for (const ExpressionPtr& operand : expression.operands) {
        ResolveExpression(*operand, scope);
    }
    const auto& operands = expression.operands;
    expression.type = FieldType::YesNo;
    switch (expression.kind) {
    case Kind::Negate:
        if (operands[0]->type == FieldType::Text || operands[0]->type == FieldType::DateTime) {
            FailAt(EngineErrorNumber::TypeMismatch,
                   QStringLiteral("A number is expected behind the sign, not %1").arg(Describe(operands[0]->type)),
                   operands[0]->at);
        }
        expression.type = operands[0]->type == FieldType::YesNo ? FieldType::Integer : operands[0]->type;
        break;
    case Kind::Binary:
        if (IsComparison(expression.op)) {
            CheckComparable(*operands[0], *operands[1], expression.at);
        } else {
            expression.type = ArithmeticType(expression);
        }
        break;
    case Kind::Not:
    case Kind::And:
    case Kind::Or:
        for (const ExpressionPtr& operand : operands) {
            CheckCondition(*operand);
        }
        break;
    case Kind::Between:
        CheckComparable(*operands[0], *operands[1], expression.at);
        CheckComparable(*operands[0], *operands[2], expression.at);
        break;
    case Kind::Like:
        CheckPattern(*operands[1]);
        break;
    default: // IsNull: of anything
        break;
    }
}

void Resolver::CheckPattern(const Expression& pattern) {
    literalsShapeText_ = literalsShapeText_ || pattern.literal >= 0;
    const QString text = pattern.kind == Expression::Kind::Literal ? pattern.value.ToText() : QString();
    if (HasUnclosedList(text)) {
        FailAt(QStringLiteral("The pattern \"%1\" has a \"[\" without its \"]\" (the character itself is written [[])")
                   .arg(QString(text).replace(u'"', QStringLiteral("\"\""))),
               pattern.at);
    }
}

FieldType Resolver::ArithmeticType(const Expression& expression) const {
    const FieldType left = expression.operands[0]->type;
    const FieldType right = expression.operands[1]->type;
    const auto either = [&](FieldType type) { return left == type || right == type; };
    const auto mismatch = [&](const QString& hint) {
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("%1 and %2 do not go together%3").arg(Describe(left), Describe(right), hint),
               expression.at);
    };
    if (expression.op == Operator::Concatenate) {
        return FieldType::Text;
    }
    if (either(FieldType::Text)) {
        const bool joins = expression.op == Operator::Add && (left == right || either(FieldType::Unknown));
        if (!joins) {
            mismatch(expression.op == Operator::Add ? QStringLiteral(" (& joins texts)") : QString());
        }
        return FieldType::Text;
    }
    if (either(FieldType::DateTime)) {
        const bool dateFirst = left == FieldType::DateTime;
        if (expression.op == Operator::Subtract && dateFirst) {
            return right == FieldType::DateTime  ? FieldType::Real
                   : right == FieldType::Unknown ? FieldType::Unknown
                                                 : FieldType::DateTime;
        }
        if (expression.op == Operator::Subtract && left == FieldType::Unknown) {
            return FieldType::Real;
        }
        if (expression.op != Operator::Add || left == right) {
            mismatch({});
        }
        return FieldType::DateTime;
    }
    switch (expression.op) {
    case Operator::Divide:
        return FieldType::Real;
    case Operator::Modulo:
        return FieldType::Integer;
    case Operator::Multiply:
        break;
    default:
        if (either(FieldType::Unknown)) {
            return FieldType::Unknown;
        }
    }
    return either(FieldType::Real) || either(FieldType::Unknown) ? FieldType::Real : FieldType::Integer;
}

void Resolver::CheckComparable(const Expression& first, const Expression& second, qsizetype at) const {
    const auto either = [&](FieldType type) { return first.type == type || second.type == type; };
    if (first.type == second.type || either(FieldType::Unknown) || (IsNumeric(first.type) && IsNumeric(second.type))) {
        return;
    }
    QString hint;
    if (either(FieldType::DateTime)) {
        hint = QStringLiteral(" (a date is written between # marks)");
    } else if (either(FieldType::Text)) {
        hint = QStringLiteral(" (a text stands in quotes, a number without)");
    }
    FailAt(EngineErrorNumber::TypeMismatch,
           QStringLiteral("%1 does not compare with %2%3").arg(Describe(first.type), Describe(second.type), hint), at);
}

void Resolver::ResolveIn(Expression& expression, const Scope& scope) {
    for (const ExpressionPtr& operand : expression.operands) {
        ResolveExpression(*operand, scope);
    }
    expression.type = FieldType::YesNo;
    const Expression& value = *expression.operands.front();
    for (size_t i = 1; i < expression.operands.size(); ++i) {
        CheckComparable(value, *expression.operands[i], expression.operands[i]->at);
    }
    if (expression.query) {
        ResolveQuery(*expression.query, &scope);
        const Select& select = expression.query->selects.front();
        if (expression.query->types.size() != 1) {
            FailAt(QStringLiteral("A select behind IN needs exactly one column: it begins"), select.at);
        }
        Expression column;
        column.type = expression.query->types.front();
        CheckComparable(value, column, select.at);
    }
}

void Resolver::ResolveSubquery(Expression& expression, const Scope& scope) {
    ResolveQuery(*expression.query, &scope);
    if (expression.kind == Expression::Kind::Exists) {
        expression.type = FieldType::YesNo;
        return;
    }
    if (expression.query->types.size() != 1) {
        FailAt(QStringLiteral("A select as a value needs exactly one column: it begins"),
               expression.query->selects.front().at);
    }
    expression.type = expression.query->types.front();
}

Resolver::Match Resolver::FindField(const Expression& name, const Scope& scope) const {
    Match match;
    const auto consider = [&](Source* leaf, const auto& fits) {
        for (size_t i = 0; i < leaf->columns.size(); ++i) {
            if (fits(leaf->columns[i])) {
                match = {leaf, static_cast<int>(i), match.count + 1};
            }
        }
    };
    const auto same = [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; };
    if (name.qualifier.isEmpty()) {
        for (Source* leaf : scope.leaves) {
            consider(leaf, [&](const SourceColumn& column) {
                return same(column.name, name.name) ||
                       (!leaf->table && same(column.table + u'.' + column.name, name.name));
            });
        }
        return match;
    }
    for (Source* leaf : scope.leaves) {
        if (!same(leaf->ShownName(), name.qualifier)) {
            continue;
        }
        consider(leaf, [&](const SourceColumn& column) { return same(column.name, name.name); });
        if (match.count == 0) {
            FailAt(EngineErrorNumber::UnknownItem,
                   QStringLiteral("\"%1\" has no field \"%2\"").arg(leaf->ShownName(), name.name), name.at);
        }
        return match;
    }
    // A query's fields answer to the tables they come from, too.
    for (Source* leaf : scope.leaves) {
        if (!leaf->table) {
            consider(leaf, [&](const SourceColumn& column) {
                return same(column.table, name.qualifier) && same(column.name, name.name);
            });
        }
    }
    return match;
}

void Resolver::ResolveName(Expression& expression, const Scope& scope) {
    for (const Scope* level = &scope; level; level = level->outer) {
        const Match match = FindField(expression, *level);
        if (match.count == 0) {
            continue;
        }
        if (match.count > 1) {
            FailAt(EngineErrorNumber::AmbiguousField,
                   QStringLiteral("More than one table has a field \"%1\"; write it as Table.%1").arg(expression.name),
                   expression.at);
        }
        if (expression.qualifier.isEmpty() && declaredHere_.contains(expression.name, Qt::CaseInsensitive)) {
            FailAt(EngineErrorNumber::AmbiguousField,
                   QStringLiteral("\"%1\" is both a parameter and a field of \"%2\"; rename the parameter")
                       .arg(expression.name, match.source->ShownName()),
                   expression.at);
        }
        expression.source = match.source;
        expression.column = match.column;
        expression.type = match.source->columns[static_cast<size_t>(match.column)].type;
        return;
    }
    const QString name =
        expression.qualifier.isEmpty() ? expression.name : expression.qualifier + u'.' + expression.name;
    expression.parameter = ParameterNamed(name);
    expression.type = parameters_[static_cast<size_t>(expression.parameter)].type;
}

namespace {

void CountFields(const Expression& expression, const std::vector<Source*>& leaves, int& own, int& others) {
    if (expression.source) {
        const bool found = std::find(leaves.begin(), leaves.end(), expression.source) != leaves.end();
        ++(found ? own : others);
    }
    ForEachChild(expression, [&](const Expression& child) { CountFields(child, leaves, own, others); });
}

// Such an aggregate would belong to the select around, of which this one sees a single row.
bool OnlyOuterFields(const Expression& expression, const std::vector<Source*>& leaves) {
    int own = 0;
    int others = 0;
    CountFields(expression, leaves, own, others);
    return own == 0 && others > 0;
}

} // namespace

void Resolver::ResolveCall(Expression& expression, const Scope& scope) {
    expression.function = FindFunction(expression.name);
    if (!expression.function) {
        FailAt(EngineErrorNumber::UnknownFunction, QStringLiteral("There is no function \"%1\"").arg(expression.name),
               expression.at);
    }
    const FunctionRule& rule = *expression.function;
    const int count = static_cast<int>(expression.operands.size()) + (expression.countsRows ? 1 : 0);
    if (count < rule.minimum || count > rule.maximum) {
        const QString wanted = rule.minimum == rule.maximum
                                   ? QString::number(rule.minimum)
                                   : QStringLiteral("%1 to %2").arg(rule.minimum).arg(rule.maximum);
        FailAt(QStringLiteral("The function %1 takes %2 arguments, not %3").arg(rule.name, wanted).arg(count),
               expression.at);
    }
    Scope inner = scope;
    if (rule.IsAggregate()) {
        if (!scope.plainClause.isEmpty() || scope.insideAggregate) {
            const QString place =
                scope.insideAggregate ? QStringLiteral("an aggregate function") : scope.plainClause.toString();
            FailAt(QStringLiteral("The aggregate function %1 cannot stand in %2").arg(rule.name, place), expression.at);
        }
        scope.select->aggregated = true;
        inner.insideAggregate = true;
    }
    for (const ExpressionPtr& operand : expression.operands) {
        ResolveExpression(*operand, inner);
    }
    for (size_t i = 0; i < expression.operands.size(); ++i) {
        CheckArgument(expression, i);
        if (rule.IsAggregate() && OnlyOuterFields(*expression.operands[i], scope.leaves)) {
            FailAt(QStringLiteral("The aggregate function %1 has no field of its own select").arg(rule.name),
                   expression.at);
        }
    }
    expression.type = CallType(expression);
}

void Resolver::CheckArgument(const Expression& call, size_t index) {
    const FunctionRule& rule = *call.function;
    const Expression& operand = *call.operands[index];
    const FieldType type = operand.type;
    const bool numeric = IsNumeric(type) || type == FieldType::Unknown;
    bool fits = true;
    QString wanted;
    switch (rule.arguments[index]) {
    case ArgumentKind::Any:
    case ArgumentKind::Text:
        return;
    case ArgumentKind::Condition:
        CheckCondition(operand);
        return;
    case ArgumentKind::Number:
    case ArgumentKind::Whole:
        fits = numeric;
        wanted = QStringLiteral("a number");
        break;
    case ArgumentKind::Date:
        fits = type == FieldType::DateTime || type == FieldType::Unknown;
        wanted = QStringLiteral("a date (written between # marks)");
        break;
    case ArgumentKind::Interval:
        fits = type == FieldType::Text || type == FieldType::Unknown;
        wanted = QStringLiteral("the short name of an interval");
        literalsShapeText_ = literalsShapeText_ || operand.literal >= 0;
        if (operand.kind == Expression::Kind::Literal && operand.value.IsText() &&
            !IntervalOf(operand.value.ToText())) {
            FailAt(QStringLiteral("There is no interval \"%1\" (there are yyyy, q, m, ww, d, h, n and s)")
                       .arg(operand.value.ToText()),
                   operand.at);
        }
        break;
    case ArgumentKind::NumberOrDate:
        fits = type == FieldType::DateTime || IsNumber(type) || type == FieldType::Unknown;
        wanted = QStringLiteral("a number or a date");
        break;
    }
    if (!fits) {
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("The function %1 needs %2 here, not %3").arg(rule.name, wanted, Describe(type)),
               operand.at);
    }
}

FieldType Resolver::CallType(const Expression& expression) const {
    const FunctionRule& rule = *expression.function;
    const FieldType first = expression.operands.empty() ? FieldType::Unknown : expression.operands.front()->type;
    switch (rule.result) {
    case ResultRule::YesNo:
        return FieldType::YesNo;
    case ResultRule::Integer:
        return FieldType::Integer;
    case ResultRule::Real:
        return FieldType::Real;
    case ResultRule::Text:
        return FieldType::Text;
    case ResultRule::DateTime:
        return FieldType::DateTime;
    case ResultRule::AsFirst:
        return first;
    case ResultRule::AsFirstNumber:
        return first == FieldType::YesNo ? FieldType::Integer : first == FieldType::Unknown ? FieldType::Real : first;
    case ResultRule::WholeOfFirst:
        return first == FieldType::DateTime || first == FieldType::Unknown ? first : FieldType::Integer;
    case ResultRule::CommonOfAll: {
        // The condition of IIf is none of the results.
        FieldType common = FieldType::Unknown;
        for (size_t i = rule.form == FunctionForm::Choice ? 1 : 0; i < expression.operands.size(); ++i) {
            common = CommonType(common, expression.operands[i]->type);
        }
        return common;
    }
    }
    return FieldType::Unknown;
}

} // namespace velmora::engine::dialect
