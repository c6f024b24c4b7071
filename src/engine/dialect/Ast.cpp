#include "engine/dialect/Ast.h"

#include "engine/dialect/FunctionTable.h"

#include <algorithm>

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
        std::for_each(select.groupBy.begin(), select.groupBy.end(), visitIf);
        visitIf(select.having);
    }
    for (const OrderItem& item : query.orderBy) {
        visitIf(item.expression);
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
    bool literals = first.kind == Expression::Kind::Literal && (first.literal >= 0 || second.literal >= 0);
    for (size_t i = 0; i < first.operands.size(); ++i) {
        if (!SameExpression(*first.operands[i], *second.operands[i], literals)) {
            return false;
        }
    }
    usesLiterals = usesLiterals || literals;
    return true;
}

bool IsAggregate(const Expression& expression) {
    return expression.kind == Expression::Kind::Call && expression.function->IsAggregate();
}

void ForEachChild(const Expression& expression, const std::function<void(const Expression&)>& visit) {
    for (const ExpressionPtr& operand : expression.operands) {
        visit(*operand);
    }
    if (expression.query) {
        VisitQuery(*expression.query, visit);
    }
}

std::vector<ResultColumn> ColumnsOf(const Query& query) {
    std::vector<ResultColumn> columns;
    for (size_t i = 0; i < query.types.size(); ++i) {
        ResultColumn column = static_cast<const ResultColumn&>(query.selects.front().outputs[i]);
        column.type = query.types[i];
        if (query.selects.size() > 1) {
            column.base = -1;
        }
        columns.push_back(std::move(column));
    }
    return columns;
}

FieldType CommonType(FieldType first, FieldType second) {
    if (first == second || second == FieldType::Unknown) {
        return first;
    }
    if (first == FieldType::Unknown) {
        return second;
    }
    if (IsNumeric(first) && IsNumeric(second)) {
        return first == FieldType::Real || second == FieldType::Real ? FieldType::Real : FieldType::Integer;
    }
    return FieldType::Text;
}

} // namespace velmora::engine::dialect
