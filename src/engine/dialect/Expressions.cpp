#include "engine/dialect/Expressions.h"

#include "engine/dialect/FunctionTable.h"

namespace velmora::engine::dialect {

namespace {

bool SameNode(const Expression& first, const Expression& second) {
    return first.kind == second.kind && first.op == second.op && first.negated == second.negated &&
           first.countsRows == second.countsRows && first.function == second.function &&
           first.source == second.source && first.column == second.column && first.parameter == second.parameter &&
           first.value == second.value && first.operands.size() == second.operands.size() && !first.query &&
           !second.query;
}

void VisitSource(const Source& source, const std::function<void(const Expression&)>& visit);

void VisitQuery(const Query& query, const std::function<void(const Expression&)>& visit) {
    const auto visitIf = [&](const ExpressionPtr& expression) {
        if (expression) {
            visit(*expression);
        }
    };
    for (const Select& select : query.selects) {
        for (const SelectItem& item : select.items) {
            visitIf(item.expression);
        }
        for (const SourcePtr& source : select.from) {
            VisitSource(*source, visit);
        }
        visitIf(select.where);
        for (const ExpressionPtr& group : select.groupBy) {
            visit(*group);
        }
        visitIf(select.having);
    }
    for (const OrderItem& item : query.orderBy) {
        visit(*item.expression);
    }
}

void VisitSource(const Source& source, const std::function<void(const Expression&)>& visit) {
    if (source.kind == Source::Kind::Join) {
        VisitSource(*source.left, visit);
        VisitSource(*source.right, visit);
        visit(*source.on);
    } else if (source.query) {
        VisitQuery(*source.query, visit);
    }
}

} // namespace

bool SameExpression(const Expression& first, const Expression& second, bool& usesLiterals) {
    if (!SameNode(first, second)) {
        return false;
    }
    bool literals = first.kind == Expression::Kind::Literal;
    for (size_t i = 0; i < first.operands.size(); ++i) {
        if (!SameExpression(*first.operands[i], *second.operands[i], literals)) {
            return false;
        }
    }
    usesLiterals = usesLiterals || literals;
    return true;
}

bool IsAggregate(const Expression& expression) {
    return expression.kind == Expression::Kind::Call && FunctionAt(expression.function).IsAggregate();
}

void ForEachChild(const Expression& expression, const std::function<void(const Expression&)>& visit) {
    for (const ExpressionPtr& operand : expression.operands) {
        visit(*operand);
    }
    if (expression.query) {
        VisitQuery(*expression.query, visit);
    }
}

} // namespace velmora::engine::dialect
