#include "engine/dialect/Expressions.h"
#include "engine/dialect/FunctionTable.h"
#include "engine/dialect/Resolver.h"
#include "engine/dialect/Types.h"

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
    if (expression.type == SqlType::Text || expression.type == SqlType::DateTime) {
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
    expression.type = SqlType::YesNo;
    switch (expression.kind) {
    case Kind::Negate:
        if (operands[0]->type == SqlType::Text || operands[0]->type == SqlType::DateTime) {
            FailAt(EngineErrorNumber::TypeMismatch,
                   QStringLiteral("A number is expected behind the sign, not %1").arg(Describe(operands[0]->type)),
                   operands[0]->at);
        }
        expression.type = operands[0]->type == SqlType::YesNo ? SqlType::Integer : operands[0]->type;
        break;
    case Kind::Binary:
        ResolveBinary(expression);
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
    default: // Like, IsNull: of anything
        break;
    }
}

void Resolver::ResolveBinary(Expression& expression) {
    if (IsComparison(expression.op)) {
        CheckComparable(*expression.operands[0], *expression.operands[1], expression.at);
        expression.type = SqlType::YesNo;
    } else {
        expression.type = ArithmeticType(expression);
    }
}

SqlType Resolver::ArithmeticType(const Expression& expression) const {
    const SqlType left = expression.operands[0]->type;
    const SqlType right = expression.operands[1]->type;
    const auto either = [&](SqlType type) { return left == type || right == type; };
    const auto mismatch = [&](const QString& hint) {
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("%1 and %2 do not go together%3").arg(Describe(left), Describe(right), hint),
               expression.at);
    };
    if (expression.op == Operator::Concatenate) {
        return SqlType::Text;
    }
    if (either(SqlType::Text)) {
        const bool joins = expression.op == Operator::Add && (left == right || either(SqlType::Unknown));
        if (!joins) {
            mismatch(expression.op == Operator::Add ? QStringLiteral(" (& joins texts)") : QString());
        }
        return SqlType::Text;
    }
    if (either(SqlType::DateTime)) {
        const bool dateFirst = left == SqlType::DateTime;
        if (expression.op == Operator::Subtract && dateFirst) {
            return right == SqlType::DateTime  ? SqlType::Real
                   : right == SqlType::Unknown ? SqlType::Unknown
                                               : SqlType::DateTime;
        }
        if (expression.op == Operator::Subtract && left == SqlType::Unknown) {
            return SqlType::Real;
        }
        if (expression.op != Operator::Add || left == right) {
            mismatch({});
        }
        return SqlType::DateTime;
    }
    switch (expression.op) {
    case Operator::Divide:
        return SqlType::Real;
    case Operator::Modulo:
        return SqlType::Integer;
    case Operator::Multiply:
        break;
    default:
        if (either(SqlType::Unknown)) {
            return SqlType::Unknown;
        }
    }
    return either(SqlType::Real) || either(SqlType::Unknown) ? SqlType::Real : SqlType::Integer;
}

void Resolver::CheckComparable(const Expression& first, const Expression& second, qsizetype at) const {
    if (Comparable(first.type, second.type)) {
        return;
    }
    QString hint;
    const auto either = [&](SqlType type) { return first.type == type || second.type == type; };
    if (either(SqlType::DateTime)) {
        hint = QStringLiteral(" (a date is written between # marks)");
    } else if (either(SqlType::Text)) {
        hint = QStringLiteral(" (a text stands in quotes, a number without)");
    }
    FailAt(EngineErrorNumber::TypeMismatch,
           QStringLiteral("%1 does not compare with %2%3").arg(Describe(first.type), Describe(second.type), hint), at);
}

void Resolver::ResolveIn(Expression& expression, const Scope& scope) {
    for (const ExpressionPtr& operand : expression.operands) {
        ResolveExpression(*operand, scope);
    }
    expression.type = SqlType::YesNo;
    const Expression& value = *expression.operands.front();
    for (size_t i = 1; i < expression.operands.size(); ++i) {
        CheckComparable(value, *expression.operands[i], expression.operands[i]->at);
    }
    if (expression.query) {
        ResolveQuery(*expression.query, &scope);
        const Select& select = expression.query->selects.front();
        if (expression.query->types.size() != 1) {
            FailAt(EngineErrorNumber::Syntax, QStringLiteral("A select behind IN needs exactly one column: it begins"),
                   select.at);
        }
        Expression column;
        column.type = expression.query->types.front();
        CheckComparable(value, column, select.at);
    }
}

void Resolver::ResolveSubquery(Expression& expression, const Scope& scope) {
    ResolveQuery(*expression.query, &scope);
    if (expression.kind == Expression::Kind::Exists) {
        expression.type = SqlType::YesNo;
        return;
    }
    if (expression.query->types.size() != 1) {
        FailAt(EngineErrorNumber::Syntax, QStringLiteral("A select as a value needs exactly one column: it begins"),
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

void Resolver::ResolveCall(Expression& expression, const Scope& scope) {
    expression.function = FindFunction(expression.name);
    if (expression.function < 0) {
        FailAt(EngineErrorNumber::UnknownFunction, QStringLiteral("There is no function \"%1\"").arg(expression.name),
               expression.at);
    }
    const FunctionRule& rule = FunctionAt(expression.function);
    const int count = static_cast<int>(expression.operands.size()) + (expression.countsRows ? 1 : 0);
    if (count < rule.minimum || count > rule.maximum) {
        const QString wanted = rule.minimum == rule.maximum
                                   ? QString::number(rule.minimum)
                                   : QStringLiteral("%1 to %2").arg(rule.minimum).arg(rule.maximum);
        FailAt(EngineErrorNumber::Syntax,
               QStringLiteral("The function %1 takes %2 arguments, not %3").arg(rule.name, wanted).arg(count),
               expression.at);
    }
    Scope inner = scope;
    if (rule.IsAggregate()) {
        if (!scope.plainClause.isEmpty() || scope.insideAggregate) {
            const QString place =
                scope.insideAggregate ? QStringLiteral("an aggregate function") : scope.plainClause.toString();
            FailAt(EngineErrorNumber::Syntax,
                   QStringLiteral("The aggregate function %1 cannot stand in %2").arg(rule.name, place), expression.at);
        }
        scope.select->aggregated = true;
        inner.insideAggregate = true;
    }
    for (const ExpressionPtr& operand : expression.operands) {
        ResolveExpression(*operand, inner);
    }
    for (size_t i = 0; i < expression.operands.size(); ++i) {
        CheckArgument(expression, i);
    }
    expression.type = CallType(expression);
}

void Resolver::CheckArgument(const Expression& call, size_t index) const {
    const FunctionRule& rule = FunctionAt(call.function);
    const Expression& operand = *call.operands[index];
    const SqlType type = operand.type;
    const bool numeric = IsNumber(type) || type == SqlType::YesNo || type == SqlType::Unknown;
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
        fits = type == SqlType::DateTime || type == SqlType::Unknown;
        wanted = QStringLiteral("a date (written between # marks)");
        break;
    case ArgumentKind::NumberOrDate:
        fits = type == SqlType::DateTime || IsNumber(type) || type == SqlType::Unknown;
        wanted = QStringLiteral("a number or a date");
        break;
    }
    if (!fits) {
        FailAt(EngineErrorNumber::TypeMismatch,
               QStringLiteral("The function %1 needs %2 here, not %3").arg(rule.name, wanted, Describe(type)),
               operand.at);
    }
}

SqlType Resolver::CallType(const Expression& expression) const {
    const FunctionRule& rule = FunctionAt(expression.function);
    const SqlType first = expression.operands.empty() ? SqlType::Unknown : expression.operands.front()->type;
    switch (rule.result) {
    case ResultRule::YesNo:
        return SqlType::YesNo;
    case ResultRule::Integer:
        return SqlType::Integer;
    case ResultRule::Real:
        return SqlType::Real;
    case ResultRule::Text:
        return SqlType::Text;
    case ResultRule::DateTime:
        return SqlType::DateTime;
    case ResultRule::AsFirst:
        return first;
    case ResultRule::AsFirstNumber:
        return first == SqlType::YesNo ? SqlType::Integer : first == SqlType::Unknown ? SqlType::Real : first;
    case ResultRule::WholeOfFirst:
        return first == SqlType::DateTime || first == SqlType::Unknown ? first : SqlType::Integer;
    case ResultRule::CommonOfAll: {
        // The condition of IIf is none of the results.
        SqlType common = SqlType::Unknown;
        for (size_t i = rule.form == FunctionForm::Choice ? 1 : 0; i < expression.operands.size(); ++i) {
            common = CommonType(common, expression.operands[i]->type);
        }
        return common;
    }
    }
    return SqlType::Unknown;
}

} // namespace velmora::engine::dialect
