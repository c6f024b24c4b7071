#include "engine/dialect/Order.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

// Every result column that the order does not name yet, from the left.
void AppendOutputs(const Query& query, std::vector<OrderKey>& keys) {
    for (size_t i = 0; i < query.types.size(); ++i) {
        const int index = static_cast<int>(i);
        const bool named = std::any_of(keys.begin(), keys.end(), [&](const OrderKey& key) {
            return key.kind == OrderKey::Kind::Output && key.index == index;
        });
        if (!named) {
            keys.push_back({OrderKey::Kind::Output, index, nullptr, nullptr, query.types[i], false});
        }
    }
}

void AppendTableKey(const Source& leaf, std::vector<OrderKey>& keys) {
    if (leaf.table->key.empty()) {
        keys.push_back({OrderKey::Kind::RowNumber, -1, nullptr, &leaf, FieldType::Integer, false});
    }
    for (const int column : leaf.table->key) {
        const bool named = std::any_of(keys.begin(), keys.end(), [&](const OrderKey& key) {
            return key.expression && key.expression->source == &leaf && key.expression->column == column;
        });
        if (!named) {
            const FieldType type = leaf.table->columns[static_cast<size_t>(column)].type;
            keys.push_back({OrderKey::Kind::Field, column, nullptr, &leaf, type, false});
        }
    }
}

void AppendImplied(const Select& select, std::vector<OrderKey>& keys) {
    for (const ExpressionPtr& group : select.groupBy) {
        keys.push_back({OrderKey::Kind::Expression, -1, group.get(), nullptr, group->type, false});
    }
    if (select.aggregated || select.leaves.size() != 1) {
        return;
    }
    const Source& leaf = *select.leaves.front();
    if (leaf.table) {
        AppendTableKey(leaf, keys);
        return;
    }
    const std::vector<OrderKey> inner = OrderOf(*leaf.query);
    for (size_t i = 0; i < inner.size(); ++i) {
        keys.push_back(
            {OrderKey::Kind::Inherited, static_cast<int>(i), nullptr, &leaf, inner[i].type, inner[i].descending});
    }
}

OrderKey KeyOf(const Query& query, const OrderItem& item) {
    const Select& select = query.selects.front();
    if (item.output < 0) {
        return {OrderKey::Kind::Expression, -1, item.expression.get(), nullptr, item.expression->type, item.descending};
    }
    const OutputColumn& output = select.outputs[static_cast<size_t>(item.output)];
    // A field is ordered as itself, so that an index can serve; a flag by its truth, not as it is stored.
    if (!ComparesRows(query) && (output.expression->source || output.type == FieldType::YesNo)) {
        return {OrderKey::Kind::Expression, -1, output.expression, nullptr, output.type, item.descending};
    }
    const FieldType type = query.types[static_cast<size_t>(item.output)];
    return {OrderKey::Kind::Output, item.output, nullptr, nullptr, type, item.descending};
}

} // namespace

std::vector<OrderKey> OrderOf(const Query& query) {
    std::vector<OrderKey> keys;
    for (const OrderItem& item : query.orderBy) {
        keys.push_back(KeyOf(query, item));
    }
    const bool keepsDoubles =
        std::any_of(query.selects.begin(), query.selects.end(), [](const Select& select) { return select.unionAll; });
    if (!ComparesRows(query)) {
        AppendImplied(query.selects.front(), keys);
    } else if (!keepsDoubles) {
        AppendOutputs(query, keys);
    }
    return keys;
}

std::vector<OrderKey> OrderOfMember(const Query& query, const Select& select) {
    std::vector<OrderKey> keys;
    if (select.distinct) {
        AppendOutputs(query, keys);
    } else {
        AppendImplied(select, keys);
    }
    return keys;
}

} // namespace velmora::engine::dialect
