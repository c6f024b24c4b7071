#include "engine/dialect/Emitter.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

QByteArray Numbered(char kind, size_t index) {
    return QByteArray(1, '"') + kind + QByteArray::number(static_cast<qulonglong>(index)) + '"';
}

SqlText FieldText(const Source& leaf, const QByteArray& column) {
    return {Quoted(leaf.sqlAlias) + '.' + column};
}

size_t KeyCount(const CatalogTable& table) {
    return std::max<size_t>(table.key.size(), 1);
}

bool IsJoin(const Source& source, bool outer) {
    return source.kind == Source::Kind::Join && (source.join != JoinKind::Inner) == outer;
}

} // namespace

// The order of the rows matters to the caller, or to the query around this one.
bool Emitter::NeedsOrder(const SelectOptions& options) {
    return !options.everyRow && (options.use == Use::Result || options.use == Use::Value || options.use == Use::Insert);
}

QByteArray Emitter::EmitQuery(const Query& query, const SelectOptions& options) {
    QByteArray text;
    const bool united = query.selects.size() > 1;
    for (const Select& select : query.selects) {
        QByteArray part = EmitSelect(query, select, options);
        if (united && select.top) {
            const QByteArray order = EmitOrder(select, OrderOfMember(query, select));
            part = "SELECT * FROM (" + part + order + writer_.Limit(*select.top) + ") AS \"u\"";
        }
        if (!text.isEmpty()) {
            text += select.unionAll ? " UNION ALL " : " UNION ";
        }
        text += part;
    }
    const std::optional<qint64> top = united ? std::nullopt : query.selects.front().top;
    if (top || NeedsOrder(options)) {
        text += EmitOrder(query.selects.front(), OrderOf(query));
    }
    return top ? text + writer_.Limit(*top) : text;
}

QByteArray Emitter::EmitSelect(const Query& query, const Select& select, const SelectOptions& options) {
    const Select* const outer = std::exchange(select_, &select);
    QByteArray text = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    const bool anyColumn = options.use == Use::Exists && !select.distinct && query.selects.size() == 1;
    if (anyColumn && select.groupBy.empty() && !select.aggregated) {
        text += '1';
    } else {
        for (size_t i = 0; i < select.outputs.size(); ++i) {
            text += (i == 0 ? "" : ", ") + EmitOutput(query, select, i, options).text;
        }
    }
    text += EmitKeys(select, options);
    SelectOptions sources = options;
    sources.order = false;
    if (query.selects.size() == 1 || select.top) {
        const bool ordered = options.order || select.top || NeedsOrder(options);
        const std::vector<OrderKey> order = query.selects.size() == 1 ? OrderOf(query) : OrderOfMember(query, select);
        if (options.order && !ComparesRows(query)) {
            text += EmitOrderColumns(order);
        }
        sources.order = ordered && std::any_of(order.begin(), order.end(), [](const OrderKey& key) {
                            return key.kind == OrderKey::Kind::Inherited;
                        });
    }
    text += " FROM " + EmitSources(select, sources);
    if (select.where && !options.everyRow) {
        const bool byKey = select.leaves.size() == 1 && select.leaves.front()->table && !select.aggregated;
        text += " WHERE " + (byKey ? EmitRanges(*select.where) : EmitCondition(*select.where)).text;
    }
    for (const ExpressionPtr& group : select.groupBy) {
        const SqlText value = group->type == FieldType::YesNo ? EmitCondition(*group) : Emit(*group);
        text += (group == select.groupBy.front() ? " GROUP BY " : ", ") + writer_.Collated(value, group->type).text;
    }
    if (select.having) {
        text += " HAVING " + EmitCondition(*select.having).text;
    }
    select_ = outer;
    return text;
}

QByteArray Emitter::EmitKeys(const Select& select, const SelectOptions& options) {
    QByteArray text;
    size_t number = 0;
    for (const SqlText& key : options.keys ? KeyColumns(select.origins) : std::vector<SqlText>()) {
        text += ", " + key.text;
        if (options.use == Use::Source) {
            text += " AS " + Numbered('k', number++);
        }
    }
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
    return range ? writer_.Narrow(text) : text;
}

// What the query around this one is to be ordered by, as columns o0, o1, ...
QByteArray Emitter::EmitOrderColumns(const std::vector<OrderKey>& order) {
    QByteArray text;
    for (size_t i = 0; i < order.size(); ++i) {
        if (order[i].kind != OrderKey::Kind::Output) {
            text += ", " + EmitOrderKey(order[i]).text + " AS " + Numbered('o', i);
        }
    }
    return text;
}

SqlText Emitter::EmitOutput(const Query& query, const Select& select, size_t index, const SelectOptions& options) {
    const OutputColumn& output = select.outputs[index];
    const FieldType type = query.types[index];
    SqlText value = Convert(Emit(*output.expression), output.type, type);
    // Rows are compared with each other: a flag by its truth, a text without regard to case.
    const bool compared = ComparesRows(query);
    if (options.truth || (type == FieldType::YesNo && (compared || options.use == Use::Members))) {
        value = writer_.IsTrue(value, type);
    }
    if (options.target) {
        value = ForField(value, type, (*options.target)[index].type);
    }
    if (compared) {
        value = writer_.Collated(value, type);
    }
    if (options.use == Use::Source) {
        value.text += " AS " + Numbered('c', index);
    }
    return value;
}

// All inner joins of FROM as one list with their conditions.
QByteArray Emitter::EmitSources(const Select& select, const SelectOptions& options) {
    std::vector<const Source*> parts;
    std::vector<const Expression*> conditions;
    for (const SourcePtr& source : select.from) {
        FlattenJoins(*source, parts, conditions);
    }
    return EmitJoined(std::move(parts), conditions, options);
}

QByteArray Emitter::EmitJoined(std::vector<const Source*> parts, const std::vector<const Expression*>& conditions,
                               const SelectOptions& options) {
    // An outer join needs no parentheses where it stands first.
    std::stable_partition(parts.begin(), parts.end(), [](const Source* part) { return IsJoin(*part, true); });
    std::vector<QByteArray> sources;
    for (const Source* part : parts) {
        const QByteArray text = EmitPart(*part, options);
        sources.push_back(!sources.empty() && IsJoin(*part, true) ? '(' + text + ')' : text);
    }
    std::vector<SqlText> tests;
    tests.reserve(conditions.size());
    for (const Expression* condition : conditions) {
        tests.push_back(EmitCondition(*condition));
    }
    return writer_.Joined(sources, tests);
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
QByteArray Emitter::EmitPart(const Source& source, const SelectOptions& options) {
    if (source.table) {
        const QByteArray table = Quoted(source.table->name);
        return source.sqlAlias == source.table->name ? table : table + " AS " + Quoted(source.sqlAlias);
    }
    if (source.kind != Source::Kind::Join) {
        SelectOptions inner{Use::Source};
        inner.keys = options.keys;
        inner.everyRow = options.everyRow;
        inner.order = options.order;
        return '(' + EmitQuery(*source.query, inner) + ") AS " + Quoted(source.sqlAlias);
    }
    const Source& kept = source.join == JoinKind::Left ? *source.left : *source.right;
    const Source& optional = source.join == JoinKind::Left ? *source.right : *source.left;
    const auto emitSide = [&](const Source& side) {
        std::vector<const Source*> parts;
        std::vector<const Expression*> conditions;
        FlattenJoins(side, parts, conditions);
        return EmitJoined(std::move(parts), conditions, options);
    };
    const QByteArray first = emitSide(kept);
    QByteArray second = emitSide(optional);
    if (optional.kind == Source::Kind::Join) {
        second = '(' + second + ')';
    }
    return first + " LEFT JOIN " + second + " ON " + EmitCondition(*source.on).text;
}

QByteArray Emitter::EmitOrder(const Select& select, const std::vector<OrderKey>& order) {
    const Select* const outer = std::exchange(select_, &select);
    QByteArray text;
    for (const OrderKey& key : order) {
        const SqlText term = writer_.Collated(EmitOrderKey(key), key.type);
        text += (text.isEmpty() ? " ORDER BY " : ", ") + writer_.OrderTerm(term, key.descending);
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
        return FieldText(*key.leaf, writer_.RowIdentity());
    case OrderKey::Kind::Inherited:
        break;
    }
    const OrderKey inner = OrderOf(*key.leaf->query)[static_cast<size_t>(key.index)];
    const bool column = inner.kind == OrderKey::Kind::Output;
    return FieldText(*key.leaf, column ? Numbered('c', static_cast<size_t>(inner.index))
                                       : Numbered('o', static_cast<size_t>(key.index)));
}

std::vector<SqlText> Emitter::KeyColumns(const std::vector<Origin>& origins) const {
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
            columns.push_back(FieldText(leaf, writer_.RowIdentity()));
        }
    }
    return columns;
}

} // namespace velmora::engine::dialect
