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

SqlText FieldText(const Source& leaf, const QByteArray& column) {
    return {Quoted(leaf.sqlAlias) + '.' + column, Binds::Whole, 3, false};
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

// The order of the rows matters to the caller, or to the query around this one.
bool Emitter::NeedsOrder(const SelectOptions& options) {
    return !options.everyRow && (options.use == Use::Result || options.use == Use::Value || options.use == Use::Insert);
}

SqlText Emitter::EmitQuery(const Query& query, const SelectOptions& options) {
    SqlText text;
    const bool united = query.selects.size() > 1;
    for (const Select& select : query.selects) {
        SqlText part = EmitSelect(query, select, options);
        if (united && select.top) {
            Append(part, "", EmitOrder(select, OrderOfMember(query, select)), 0);
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
    if (top || NeedsOrder(options)) {
        Append(text, "", EmitOrder(query.selects.front(), OrderOf(query)), 0);
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
    SelectOptions sources = options;
    if (query.selects.size() == 1 || select.top) {
        const bool ordered = options.order || select.top || NeedsOrder(options);
        const std::vector<OrderKey> order = query.selects.size() == 1 ? OrderOf(query) : OrderOfMember(query, select);
        if (options.order && !ComparesRows(query)) {
            EmitOrderColumns(order, text);
        }
        sources.order = ordered && std::any_of(order.begin(), order.end(), [](const OrderKey& key) {
                            return key.kind == OrderKey::Kind::Inherited;
                        });
    } else {
        sources.order = false;
    }
    Append(text, " FROM ", EmitSources(select, sources), besidesSource);
    if (select.where && !options.everyRow) {
        const bool byKey = select.leaves.size() == 1 && select.leaves.front()->table && !select.aggregated;
        Append(text, " WHERE ", byKey ? EmitRanges(*select.where) : EmitCondition(*select.where), besidesWhere);
    }
    for (const ExpressionPtr& group : select.groupBy) {
        const SqlText value = group->type == FieldType::YesNo ? EmitCondition(*group) : Emit(*group);
        Append(text, group == select.groupBy.front() ? " GROUP BY " : ", ", Collated(value, group->type), besidesGroup);
    }
    if (select.having) {
        Append(text, " HAVING ", EmitCondition(*select.having), besidesGroup);
    }
    select_ = outer;
    return text;
}

// The condition of a select that comes in key order: a range of a field is marked as narrow, or else the store would
// rather read the whole table along its key than sort the rows of the range.
SqlText Emitter::EmitRanges(const Expression& condition) {
    if (condition.kind == Expression::Kind::And) {
        SqlText text = EmitRanges(*condition.operands.front());
        for (size_t i = 1; i < condition.operands.size(); ++i) {
            text = Infix(text, "AND", EmitRanges(*condition.operands[i]), Binds::And);
        }
        return text;
    }
    const SqlText text = EmitCondition(condition);
    const bool range = condition.kind == Expression::Kind::Binary && condition.op >= Operator::Less &&
                       std::any_of(condition.operands.begin(), condition.operands.end(),
                                   [](const ExpressionPtr& operand) { return operand->source != nullptr; });
    return range ? CallText("likelihood", std::initializer_list<SqlText>{text, {QByteArrayLiteral("0.02")}}) : text;
}

// What the query around this one is to be ordered by, as columns o0, o1, ...
void Emitter::EmitOrderColumns(const std::vector<OrderKey>& order, SqlText& text) {
    for (size_t i = 0; i < order.size(); ++i) {
        if (order[i].kind != OrderKey::Kind::Output) {
            Append(text, ", ", EmitOrderKey(order[i]), besidesOutput);
            text.text += " AS " + Numbered('o', i);
        }
    }
}

SqlText Emitter::EmitOutput(const Query& query, const Select& select, size_t index, const SelectOptions& options) {
    const OutputColumn& output = select.outputs[index];
    const FieldType type = query.types[index];
    SqlText value = Convert(Emit(*output.expression), output.type, type);
    // Rows are compared with each other: a flag by its truth, a text without regard to case.
    const bool compared = ComparesRows(query);
    if (options.truth || (type == FieldType::YesNo && (compared || options.use == Use::Members))) {
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
        SelectOptions inner{Use::Source};
        inner.keys = options.keys;
        inner.everyRow = options.everyRow;
        inner.order = options.order;
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

SqlText Emitter::EmitOrder(const Select& select, const std::vector<OrderKey>& order) {
    const Select* const outer = std::exchange(select_, &select);
    SqlText text{{}, Binds::Or, 0, false};
    for (const OrderKey& key : order) {
        SqlText term = Collated(EmitOrderKey(key), key.type);
        if (key.descending) {
            term.text += " DESC";
        }
        Append(text, &key == &order.front() ? " ORDER BY " : ", ", term, besidesOrder);
    }
    select_ = outer;
    return text;
}

SqlText Emitter::EmitOrderKey(const OrderKey& key) {
    switch (key.kind) {
    case OrderKey::Kind::Output:
        return {QByteArray::number(key.index + 1)};
    case OrderKey::Kind::Expression:
        return key.type == FieldType::YesNo ? EmitCondition(*key.expression) : Emit(*key.expression);
    case OrderKey::Kind::Field:
        return FieldText(*key.leaf, Quoted(key.leaf->columns[static_cast<size_t>(key.index)].name));
    case OrderKey::Kind::RowNumber:
        return FieldText(*key.leaf, "rowid");
    case OrderKey::Kind::Inherited:
        break;
    }
    const OrderKey inner = OrderOf(*key.leaf->query)[static_cast<size_t>(key.index)];
    const bool column = inner.kind == OrderKey::Kind::Output;
    return FieldText(*key.leaf, column ? Numbered('c', static_cast<size_t>(inner.index))
                                       : Numbered('o', static_cast<size_t>(key.index)));
}

std::vector<SqlText> Emitter::KeyColumns(const std::vector<Origin>& origins) {
    std::vector<SqlText> columns;
    for (const Origin& origin : origins) {
        const Source& leaf = *origin.source;
        if (origin.inner >= 0) {
            const std::vector<Origin>& inner = leaf.query->selects.front().origins;
            size_t number = 0;
            for (int i = 0; i < origin.inner; ++i) {
                number += KeyCount(*inner[static_cast<size_t>(i)].table);
            }
            for (size_t i = 0; i < KeyCount(*origin.table); ++i) {
                columns.push_back(FieldText(leaf, Numbered('k', number + i)));
            }
            continue;
        }
        for (const int key : origin.table->key) {
            columns.push_back(FieldText(leaf, Quoted(origin.table->columns[static_cast<size_t>(key)].name)));
        }
        if (origin.table->key.empty()) {
            columns.push_back(FieldText(leaf, "rowid"));
        }
    }
    return columns;
}

} // namespace velmora::engine::dialect
