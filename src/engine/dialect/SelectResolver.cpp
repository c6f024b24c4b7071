#include "engine/dialect/Resolver.h"

#include <algorithm>

namespace velmora::engine::dialect {

void Resolver::ResolveQuery(Query& query, const Scope* outer) {
    for (Select& select : query.selects) {
        ResolveSelect(select, outer);
    }
    UniteTypes(query);
    ResolveOrder(query, outer);
}

void Resolver::ResolveSelect(Select& select, const Scope* outer) {
    for (const SourcePtr& source : select.from) {
        ResolveSource(*source, outer, select.leaves);
    }
    for (auto leaf = select.leaves.begin(); leaf != select.leaves.end(); ++leaf) {
        const QString& name = (*leaf)->ShownName();
        const bool twice = std::any_of(select.leaves.begin(), leaf, [&](const Source* other) {
            return !name.isEmpty() && other->ShownName().compare(name, Qt::CaseInsensitive) == 0;
        });
        if (twice) {
            FailAt(
                QStringLiteral("\"%1\" stands twice in FROM; give one of them another name with AS: again").arg(name),
                (*leaf)->at);
        }
    }
    Scope scope{select.leaves, outer, &select, {}};
    for (SelectItem& item : select.items) {
        ResolveItem(item, scope);
    }
    NameOutputs(select);
    if (select.where) {
        scope.plainClause = u"WHERE";
        ResolveCondition(*select.where, scope);
    }
    scope.plainClause = u"GROUP BY";
    for (const ExpressionPtr& group : select.groupBy) {
        ResolveExpression(*group, scope);
    }
    scope.plainClause = {};
    if (select.having) {
        ResolveCondition(*select.having, scope);
    }
    select.aggregated = select.aggregated || !select.groupBy.empty();
    if (select.having && !select.aggregated) {
        FailAt(QStringLiteral("HAVING needs GROUP BY or an aggregate function: the condition"), select.having->at);
    }
    if (select.aggregated) {
        for (const OutputColumn& output : select.outputs) {
            CheckGrouping(select, *output.expression);
        }
        if (select.having) {
            CheckGrouping(select, *select.having);
        }
    }
    TraceOrigins(select);
}

void Resolver::ResolveItem(SelectItem& item, Scope& scope) {
    Select& select = *scope.select;
    if (item.star) {
        ExpandStar(item, select);
        return;
    }
    Expression& expression = *item.expression;
    ResolveExpression(expression, scope);
    OutputColumn output;
    output.type = expression.type;
    output.expression = &expression;
    output.aliased = !item.alias.isEmpty();
    if (expression.source) {
        const SourceColumn& column = expression.source->columns[static_cast<size_t>(expression.column)];
        output.name = column.name;
        const bool byInnerTable = !expression.source->table && !expression.qualifier.isEmpty() &&
                                  expression.qualifier.compare(expression.source->ShownName(), Qt::CaseInsensitive);
        const bool nameless = expression.source->ShownName().isEmpty();
        output.table = byInnerTable || nameless ? column.table : expression.source->ShownName();
    }
    if (output.aliased) {
        output.name = item.alias;
    }
    select.outputs.push_back(std::move(output));
}

void Resolver::ExpandStar(const SelectItem& item, Select& select) {
    bool found = false;
    for (const Source* leaf : select.leaves) {
        if (!item.starOf.isEmpty() && item.starOf.compare(leaf->ShownName(), Qt::CaseInsensitive) != 0) {
            continue;
        }
        found = true;
        // The fields of a query that stands alone keep the tables they come from: [Asset.Name], [Reservation.Name].
        const bool innerTables = !leaf->table && (select.leaves.size() == 1 || leaf->ShownName().isEmpty());
        for (size_t i = 0; i < leaf->columns.size(); ++i) {
            auto name = std::make_unique<Expression>();
            name->kind = Expression::Kind::Name;
            name->at = item.at;
            name->name = leaf->columns[i].name;
            name->source = leaf;
            name->column = static_cast<int>(i);
            name->type = leaf->columns[i].type;
            OutputColumn output;
            output.name = name->name;
            output.table = innerTables ? leaf->columns[i].table : leaf->ShownName();
            output.type = name->type;
            output.expression = name.get();
            select.outputs.push_back(std::move(output));
            select.starColumns.push_back(std::move(name));
        }
    }
    if (!found) {
        FailAt(EngineErrorNumber::UnknownTable, QStringLiteral("No table of FROM is named \"%1\"").arg(item.starOf),
               item.at);
    }
}

void Resolver::NameOutputs(Select& select) const {
    int unnamed = 1000;
    for (OutputColumn& output : select.outputs) {
        if (output.name.isEmpty()) {
            output.name = QStringLiteral("Expr%1").arg(unnamed++);
        }
    }
    constexpr size_t maximumColumns = 1000;
    if (select.outputs.size() > maximumColumns) {
        FailAt(QStringLiteral("The select has %1 columns, more than %2: it begins")
                   .arg(select.outputs.size())
                   .arg(maximumColumns),
               select.at);
    }
}

namespace {

bool HasOuterJoin(const Source& source) {
    return source.kind == Source::Kind::Join &&
           (source.join != JoinKind::Inner || HasOuterJoin(*source.left) || HasOuterJoin(*source.right));
}

} // namespace

void Resolver::TraceOrigins(Select& select) const {
    const bool plain = !select.distinct && !select.aggregated && !select.top &&
                       std::none_of(select.from.begin(), select.from.end(),
                                    [](const SourcePtr& source) { return HasOuterJoin(*source); });
    if (!plain) {
        return;
    }
    std::vector<Origin> origins;
    for (const Source* leaf : select.leaves) {
        if (leaf->table) {
            origins.push_back({leaf->table, leaf->ShownName(), leaf, -1});
            continue;
        }
        const Select& inner = leaf->query->selects.front();
        if (leaf->query->selects.size() != 1 || inner.origins.empty()) {
            return;
        }
        for (size_t i = 0; i < inner.origins.size(); ++i) {
            origins.push_back({inner.origins[i].table, inner.origins[i].alias, leaf, static_cast<int>(i)});
        }
    }
    select.origins = std::move(origins);
    for (OutputColumn& output : select.outputs) {
        const Source* source = output.expression->source;
        if (!source) {
            continue;
        }
        const SourceColumn& column = source->columns[static_cast<size_t>(output.expression->column)];
        for (size_t i = 0; i < select.origins.size() && column.base >= 0; ++i) {
            const Origin& origin = select.origins[i];
            if (origin.source == source && (origin.inner < 0 || origin.inner == column.base)) {
                output.base = static_cast<int>(i);
                output.baseColumn = column.baseColumn;
            }
        }
    }
}

void Resolver::UniteTypes(Query& query) const {
    for (const OutputColumn& output : query.selects.front().outputs) {
        query.types.push_back(output.type);
    }
    for (const Select& select : query.selects) {
        if (select.outputs.size() != query.types.size()) {
            FailAt(QStringLiteral("The selects of a UNION need the same number of columns; this one has %1, the first "
                                  "%2")
                       .arg(select.outputs.size())
                       .arg(query.types.size()),
                   select.at);
        }
        for (size_t i = 0; i < query.types.size(); ++i) {
            query.types[i] = CommonType(query.types[i], select.outputs[i].type);
        }
    }
}

void Resolver::ResolveOrder(Query& query, const Scope* outer) {
    Select& select = query.selects.front();
    const bool united = query.selects.size() > 1;
    for (OrderItem& item : query.orderBy) {
        item.output = OutputOf(*item.expression, select);
        if (item.output >= 0) {
            continue;
        }
        if (united) {
            FailAt(QStringLiteral("A UNION is ordered by the names or numbers of its columns only: the expression"),
                   item.expression->at);
        }
        const bool wasAggregated = select.aggregated;
        ResolveExpression(*item.expression, Scope{select.leaves, outer, &select, {}});
        if (select.aggregated && !wasAggregated) {
            FailAt(QStringLiteral("ORDER BY has an aggregate function, but the select has none: the expression"),
                   item.expression->at);
        }
        if (select.aggregated) {
            CheckGrouping(select, *item.expression);
        }
        if (!select.distinct) {
            continue;
        }
        for (size_t i = 0; i < select.outputs.size() && item.output < 0; ++i) {
            if (SameExpression(*select.outputs[i].expression, *item.expression, literalsShapeText_)) {
                item.output = static_cast<int>(i);
            }
        }
        if (item.output < 0) {
            FailAt(QStringLiteral("With DISTINCT, ORDER BY can only name what is selected: the expression"),
                   item.expression->at);
        }
    }
}

// The output column that an ORDER BY item means by its number or by a plain name; -1 for any other expression.
int Resolver::OutputOf(const Expression& expression, const Select& select) {
    const auto& outputs = select.outputs;
    if (expression.kind == Expression::Kind::Literal && expression.value.IsInteger()) {
        const qint64 number = expression.value.ToInteger();
        if (number < 1 || number > static_cast<qint64>(outputs.size())) {
            FailAt(QStringLiteral("ORDER BY names column %1, but there are %2").arg(number).arg(outputs.size()),
                   expression.at);
        }
        literalsShapeText_ = literalsShapeText_ || expression.literal >= 0;
        return static_cast<int>(number) - 1;
    }
    if (expression.kind != Expression::Kind::Name || !expression.qualifier.isEmpty()) {
        return -1;
    }
    int found = -1;
    bool several = false;
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (outputs[i].name.compare(expression.name, Qt::CaseInsensitive) != 0) {
            continue;
        }
        if (outputs[i].aliased) {
            return static_cast<int>(i);
        }
        several = found >= 0;
        found = static_cast<int>(i);
    }
    return several ? -1 : found;
}

void Resolver::CheckGrouping(const Select& select, const Expression& expression) {
    for (const ExpressionPtr& group : select.groupBy) {
        if (SameExpression(*group, expression, literalsShapeText_)) {
            return;
        }
    }
    if (IsAggregate(expression)) {
        return;
    }
    const bool ownField = expression.source && std::find(select.leaves.begin(), select.leaves.end(),
                                                         expression.source) != select.leaves.end();
    if (ownField) {
        FailAt(
            QStringLiteral("The field \"%1\" is neither in GROUP BY nor in an aggregate function").arg(expression.name),
            expression.at);
    }
    ForEachChild(expression, [&](const Expression& child) { CheckGrouping(select, child); });
}

} // namespace velmora::engine::dialect
