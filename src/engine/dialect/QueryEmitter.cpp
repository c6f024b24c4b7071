#include "engine/dialect/Emitter.h"
#include "engine/dialect/Types.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

// Symbols that the store's parser holds while it reads the clauses of a select.
constexpr int besidesOutput = 6;
constexpr int besidesSource = 10;
constexpr int besidesWhere = 8;
constexpr int besidesGroup = 11;
constexpr int besidesOrder = 13;

QByteArray Numbered(char kind, size_t index) {
    return QByteArray(1, '"') + kind + QByteArray::number(static_cast<qulonglong>(index)) + '"';
}

size_t KeyCount(const CatalogTable& table) {
    return std::max<size_t>(table.key.size(), 1);
}

bool IsJoin(const Source& source, bool outer) {
    return source.kind == Source::Kind::Join && (source.join != JoinKind::Inner) == outer;
}

void Append(SqlText& text, const char* between, const SqlText& more, int besides) {
    text.text += between + more.text;
    text.pending = std::max(text.pending, more.pending + besides);
}

} // namespace

SqlText Emitter::EmitQuery(const Query& query, const SelectOptions& options) {
    SqlText text;
    const bool united = query.selects.size() > 1;
    for (const Select& select : query.selects) {
        SqlText part = EmitSelect(query, select, options);
        if (united && select.top) {
            Append(part, "", EmitTerms(ImpliedOrder(query, select, {})), 0);
            part.text = "SELECT * FROM (" + part.text + " LIMIT " + QByteArray::number(*select.top) + ')';
            part.pending += besidesSource;
        }
        if (&select == &query.selects.front()) {
            text = std::move(part);
        } else {
            Append(text, select.unionAll ? " UNION ALL " : " UNION ", part, 2);
        }
    }
    const std::optional<qint64> top = united ? std::nullopt : query.selects.front().top;
    const bool ordered = options.use == Use::Result || options.use == Use::Value || options.use == Use::Insert;
    if (!options.everyRow && (top || ordered)) {
        const SqlText order = EmitOrder(query);
        Append(text, "", order, 0);
    }
    if (top) {
        text.text += " LIMIT " + QByteArray::number(*top);
    }
    return text;
}

SqlText Emitter::EmitSelect(const Query& query, const Select& select, const SelectOptions& options) {
    const Select* const outer = std::exchange(select_, &select);
    SqlText text{select.distinct ? "SELECT DISTINCT " : "SELECT ", Binds::Or, 1, false};
    const bool anyColumn = options.use == Use::Exists && !select.distinct && query.selects.size() == 1;
    if (anyColumn && select.groupBy.empty() && !select.aggregated) {
        text.text += '1';
    } else {
        for (size_t i = 0; i < select.outputs.size(); ++i) {
            Append(text, i == 0 ? "" : ", ", EmitOutput(query, select, i, options), besidesOutput);
        }
    }
    if (options.keys) {
        size_t number = 0;
        for (const SqlText& key : KeyColumns(select.origins)) {
            text.text += ", " + key.text;
            if (options.use == Use::Source) {
                text.text += " AS " + Numbered('k', number++);
            }
        }
    }
    Append(text, " FROM ", EmitSources(select, options), besidesSource);
    if (select.where && !options.everyRow) {
        Append(text, " WHERE ", EmitCondition(*select.where), besidesWhere);
    }
    for (const ExpressionPtr& group : select.groupBy) {
        const SqlText value = group->type == SqlType::YesNo ? EmitCondition(*group) : Emit(*group);
        Append(text, group == select.groupBy.front() ? " GROUP BY " : ", ", Collated(value, group->type), besidesGroup);
    }
    if (select.having) {
        Append(text, " HAVING ", EmitCondition(*select.having), besidesGroup);
    }
    select_ = outer;
    return text;
}

SqlText Emitter::EmitOutput(const Query& query, const Select& select, size_t index, const SelectOptions& options) {
    const OutputColumn& output = select.outputs[index];
    const SqlType type = query.types[index];
    SqlText value = Convert(Emit(*output.expression), output.type, type);
    // Rows are compared with each other: a flag by its truth, a text without regard to case.
    const bool compared = select.distinct || query.selects.size() > 1;
    if (options.truth || (type == SqlType::YesNo && (compared || options.use == Use::Members))) {
        value = Truth(value, type);
    }
    if (options.target) {
        value = ForField(value, type, (*options.target)[index].type);
    }
    if (compared) {
        value = Collated(value, type);
    }
    if (options.use == Use::Source) {
        value.text += " AS " + Numbered('c', index);
    }
    return value;
}

// All inner joins of FROM as one flat list with their conditions behind it: the store is free to choose the order, and
// no join stands in parentheses that need not.
SqlText Emitter::EmitSources(const Select& select, const SelectOptions& options) {
    std::vector<const Source*> parts;
    std::vector<const Expression*> conditions;
    for (const SourcePtr& source : select.from) {
        FlattenJoins(*source, parts, conditions);
    }
    return EmitJoined(std::move(parts), conditions, options);
}

SqlText Emitter::EmitJoined(std::vector<const Source*> parts, const std::vector<const Expression*>& conditions,
                            const SelectOptions& options) {
    // An outer join needs no parentheses where it stands first.
    std::stable_partition(parts.begin(), parts.end(), [](const Source* part) { return IsJoin(*part, true); });
    SqlText text = EmitPart(*parts.front(), options);
    for (size_t i = 1; i < parts.size(); ++i) {
        SqlText part = EmitPart(*parts[i], options);
        if (IsJoin(*parts[i], true)) {
            part = {'(' + part.text + ')', Binds::Whole, part.pending + 2, false};
        }
        Append(text, " JOIN ", part, 2);
    }
    const char* joint = " ON ";
    for (const Expression* condition : conditions) {
        Append(text, joint, EmitCondition(*condition).Within(Binds::Not), besidesSource);
        joint = " AND ";
    }
    return text;
}

void Emitter::FlattenJoins(const Source& source, std::vector<const Source*>& parts,
                           std::vector<const Expression*>& conditions) {
    if (!IsJoin(source, false)) {
        parts.push_back(&source);
        return;
    }
    FlattenJoins(*source.left, parts, conditions);
    FlattenJoins(*source.right, parts, conditions);
    conditions.push_back(source.on.get());
}

// A table, a sub-select, or an outer join. A RIGHT JOIN is written as the LEFT JOIN that it is from the other side.
SqlText Emitter::EmitPart(const Source& source, const SelectOptions& options) {
    if (source.table) {
        SqlText text{Quoted(source.table->name)};
        if (source.sqlAlias != source.table->name) {
            text.text += " AS " + Quoted(source.sqlAlias);
        }
        return text;
    }
    if (source.kind != Source::Kind::Join) {
        const SelectOptions inner{Use::Source, options.keys, options.everyRow, false, nullptr};
        const SqlText query = EmitQuery(*source.query, inner);
        return {'(' + query.text + ") AS " + Quoted(source.sqlAlias), Binds::Whole, query.pending + 2, false};
    }
    const Source& kept = source.join == JoinKind::Left ? *source.left : *source.right;
    const Source& optional = source.join == JoinKind::Left ? *source.right : *source.left;
    const auto emitSide = [&](const Source& side) {
        std::vector<const Source*> parts;
        std::vector<const Expression*> conditions;
        FlattenJoins(side, parts, conditions);
        return EmitJoined(std::move(parts), conditions, options);
    };
    SqlText text = emitSide(kept);
    SqlText other = emitSide(optional);
    if (optional.kind == Source::Kind::Join) {
        other = {'(' + other.text + ')', Binds::Whole, other.pending + 2, false};
    }
    Append(text, " LEFT JOIN ", other, 2);
    Append(text, " ON ", EmitCondition(*source.on), besidesSource);
    return text;
}

SqlText Emitter::EmitOrder(const Query& query) {
    const Select& select = query.selects.front();
    const Select* const outer = std::exchange(select_, &select);
    std::vector<OrderTerm> terms;
    for (const OrderItem& item : query.orderBy) {
        terms.push_back(EmitOrderItem(query, item));
    }
    std::vector<OrderTerm> implied;
    if (query.selects.size() == 1) {
        implied = ImpliedOrder(query, select, query.orderBy);
    } else if (std::none_of(query.selects.begin(), query.selects.end(),
                            [](const Select& one) { return one.unionAll; })) {
        implied = MemberOrder(query.types, query.orderBy);
    }
    std::move(implied.begin(), implied.end(), std::back_inserter(terms));
    select_ = outer;
    return EmitTerms(terms);
}

SqlText Emitter::EmitTerms(const std::vector<OrderTerm>& terms) {
    SqlText text{{}, Binds::Or, 0, false};
    for (const OrderTerm& term : terms) {
        SqlText sql = Collated(term.sql, term.type);
        if (term.descending) {
            sql.text += " DESC";
        }
        Append(text, &term == &terms.front() ? " ORDER BY " : ", ", sql, besidesOrder);
    }
    return text;
}

Emitter::OrderTerm Emitter::EmitOrderItem(const Query& query, const OrderItem& item) {
    const Select& select = query.selects.front();
    if (item.output < 0) {
        const SqlType type = item.expression->type;
        const SqlText sql = type == SqlType::YesNo ? EmitCondition(*item.expression) : Emit(*item.expression);
        return {sql, type, item.descending};
    }
    const auto index = static_cast<size_t>(item.output);
    const OutputColumn& output = select.outputs[index];
    const bool compared = select.distinct || query.selects.size() > 1;
    if (!compared && (output.expression->source || output.type == SqlType::YesNo)) {
        const SqlText sql =
            output.type == SqlType::YesNo ? EmitCondition(*output.expression) : Emit(*output.expression);
        return {sql, output.type, item.descending};
    }
    return {{QByteArray::number(item.output + 1)}, query.types[index], item.descending};
}

// Rows without doubles come by their columns, from the left.
std::vector<Emitter::OrderTerm> Emitter::MemberOrder(const std::vector<SqlType>& types,
                                                     const std::vector<OrderItem>& given) {
    std::vector<OrderTerm> terms;
    for (size_t i = 0; i < types.size(); ++i) {
        const bool named = std::any_of(given.begin(), given.end(),
                                       [&](const OrderItem& item) { return item.output == static_cast<int>(i); });
        if (!named) {
            terms.push_back({{QByteArray::number(static_cast<qulonglong>(i + 1))}, types[i], false});
        }
    }
    return terms;
}

// Where the text leaves the order open: the rows of one table come by its key, groups by what they are grouped by.
std::vector<Emitter::OrderTerm> Emitter::ImpliedOrder(const Query& query, const Select& select,
                                                      const std::vector<OrderItem>& given) {
    if (select.distinct) {
        return MemberOrder(query.types, given);
    }
    std::vector<OrderTerm> terms;
    for (const ExpressionPtr& group : select.groupBy) {
        const SqlText value = group->type == SqlType::YesNo ? EmitCondition(*group) : Emit(*group);
        terms.push_back({value, group->type, false});
    }
    if (select.aggregated || select.leaves.size() != 1 || !select.leaves.front()->table) {
        return terms;
    }
    const Source& leaf = *select.leaves.front();
    const QByteArray prefix = Quoted(leaf.sqlAlias) + '.';
    if (leaf.table->key.empty()) {
        terms.push_back({{prefix + "rowid", Binds::Whole, 3, false}, SqlType::Integer, false});
    }
    for (const int key : leaf.table->key) {
        const bool named = std::any_of(given.begin(), given.end(), [&](const OrderItem& item) {
            const Expression& expression =
                item.output >= 0 ? *select.outputs[static_cast<size_t>(item.output)].expression : *item.expression;
            return expression.source == &leaf && expression.column == key;
        });
        if (!named) {
            const CatalogColumn& column = leaf.table->columns[static_cast<size_t>(key)];
            terms.push_back({{prefix + Quoted(column.name), Binds::Whole, 3, false}, column.type, false});
        }
    }
    return terms;
}

std::vector<SqlText> Emitter::KeyColumns(const std::vector<Origin>& origins) {
    std::vector<SqlText> columns;
    for (const Origin& origin : origins) {
        const QByteArray prefix = Quoted(origin.source->sqlAlias) + '.';
        if (origin.inner >= 0) {
            const std::vector<Origin>& inner = origin.source->query->selects.front().origins;
            size_t number = 0;
            for (int i = 0; i < origin.inner; ++i) {
                number += KeyCount(*inner[static_cast<size_t>(i)].table);
            }
            for (size_t i = 0; i < KeyCount(*origin.table); ++i) {
                columns.push_back({prefix + Numbered('k', number + i), Binds::Whole, 3, false});
            }
            continue;
        }
        for (const int key : origin.table->key) {
            const QString& name = origin.table->columns[static_cast<size_t>(key)].name;
            columns.push_back({prefix + Quoted(name), Binds::Whole, 3, false});
        }
        if (origin.table->key.empty()) {
            columns.push_back({prefix + "rowid", Binds::Whole, 3, false});
        }
    }
    return columns;
}

} // namespace velmora::engine::dialect
