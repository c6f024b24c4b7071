#include "engine/sqlite/salvage/TableShape.h"

#include <algorithm>

namespace velmora::engine::salvage {

namespace {

using Kind = RecordField::Kind;
using sqlite::Statement;

// By the declared type, with the store's own rules.
Content ContentOf(const QByteArray& declaredType) {
    const QByteArray type = declaredType.toUpper();
    if (type.contains("INT") || type.contains("BOOL")) {
        return Content::Number;
    }
    if (type.contains("CHAR") || type.contains("CLOB") || type.contains("TEXT")) {
        return Content::Text;
    }
    if (type.isEmpty() || type.contains("BLOB")) {
        return Content::Anything;
    }
    if (type.contains("REAL") || type.contains("FLOA") || type.contains("DOUB")) {
        return Content::Number;
    }
    return Content::NumberOrText;
}

bool CanHold(Content content, Kind kind) {
    switch (kind) {
    case Kind::Null:
        return true;
    case Kind::Integer:
    case Kind::Real:
        return content != Content::Text;
    case Kind::Text:
        return content != Content::Number;
    case Kind::Blob:
        return content == Content::Anything;
    }
    return false;
}

constexpr int virtualGeneratedColumn = 2;
constexpr int storedGeneratedColumn = 3;

int Position(const TableShape& table, const QByteArray& column) {
    for (size_t index = 0; index < table.stored.size(); ++index) {
        if (table.stored[index].name == column) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

} // namespace

int TableShape::Mismatches(std::span<const RecordField> values) const {
    int wrong = 0;
    for (size_t index = 0; index < values.size(); ++index) {
        const bool mustBeNull = static_cast<int>(index) == rowNumberColumn;
        const bool fits =
            mustBeNull ? values[index].kind == Kind::Null : CanHold(stored[index].content, values[index].kind);
        wrong += fits ? 0 : 1;
    }
    return wrong;
}

bool TableShape::Fits(std::span<const RecordField> values) const {
    return values.size() == stored.size() && Mismatches(values) == 0;
}

bool TableShape::Allows(std::span<const RecordField> values) const {
    const auto rowNumber = static_cast<size_t>(rowNumberColumn);
    if (values.size() > stored.size() ||
        (rowNumberColumn >= 0 && rowNumber < values.size() && values[rowNumber].kind != Kind::Null)) {
        return false;
    }
    const auto held = std::count_if(values.begin(), values.end(), [](const auto& v) { return v.kind != Kind::Null; });
    const qint64 wrong = Mismatches(values);
    return held == 0 || 2 * wrong <= held;
}

bool IndexShape::Covers(const TableShape& table) const {
    for (int column = 0; column < static_cast<int>(table.stored.size()); ++column) {
        if (column != table.rowNumberColumn && std::find(columns.begin(), columns.end(), column) == columns.end()) {
            return false;
        }
    }
    return true;
}

namespace {

// Without row numbers, a record holds the key first and the other columns behind it: the order of the key's index.
void OrderByKey(sqlite3* database, TableShape& shape) {
    std::vector<ColumnShape> ordered;
    Statement key(database, "SELECT info.name FROM pragma_index_list(?1) AS list, "
                            "pragma_index_xinfo(list.name) AS info WHERE list.origin = 'pk' ORDER BY info.seqno");
    key.BindText(1, shape.name);
    while (key.Step()) {
        const int column = Position(shape, key.TextCopy(0));
        if (column >= 0) {
            ordered.push_back(shape.stored[static_cast<size_t>(column)]);
        }
    }
    shape.stored = std::move(ordered);
}

void ReadKey(sqlite3* database, TableShape& shape) {
    Statement key(database, "SELECT name FROM pragma_table_xinfo(?1) WHERE pk > 0 ORDER BY pk");
    key.BindText(1, shape.name);
    while (key.Step()) {
        const int column = Position(shape, key.TextCopy(0));
        if (column >= 0) {
            shape.key.push_back(column);
        }
    }
}

bool HasKeyIndex(sqlite3* database, const QByteArray& table) {
    Statement key(database, "SELECT 1 FROM pragma_index_list(?1) WHERE origin = 'pk'");
    key.BindText(1, table);
    return key.Step();
}

} // namespace

std::optional<TableShape> ReadTableShape(sqlite3* database, const QByteArray& table) {
    Statement kind(database, "SELECT name, wr FROM pragma_table_list(?1) WHERE schema = 'main' AND type = 'table'");
    kind.BindText(1, table);
    if (!kind.Step()) {
        return std::nullopt;
    }
    TableShape shape;
    shape.name = kind.TextCopy(0);
    shape.hasRowNumbers = kind.Integer(1) == 0;
    // A key without an index of its own is the row number.
    const bool keyIsRowNumber = shape.hasRowNumbers && !HasKeyIndex(database, shape.name);
    Statement columns(database, "SELECT name, type, pk, hidden FROM pragma_table_xinfo(?1) ORDER BY cid");
    columns.BindText(1, shape.name);
    while (columns.Step()) {
        if (columns.Integer(3) == virtualGeneratedColumn) {
            continue;
        }
        if (keyIsRowNumber && columns.Integer(2) != 0) {
            shape.rowNumberColumn = static_cast<int>(shape.stored.size());
        }
        shape.stored.push_back(
            {columns.TextCopy(0), ContentOf(columns.TextCopy(1)), columns.Integer(3) == storedGeneratedColumn});
    }
    if (!shape.hasRowNumbers) {
        OrderByKey(database, shape);
    }
    ReadKey(database, shape);
    return shape;
}

std::vector<IndexShape> ReadIndexShapes(sqlite3* database, const TableShape& table) {
    std::vector<IndexShape> shapes;
    if (!table.hasRowNumbers) {
        return shapes;
    }
    Statement list(database, "SELECT name, origin FROM pragma_index_list(?1) WHERE NOT partial");
    list.BindText(1, table.name);
    while (list.Step()) {
        IndexShape shape;
        shape.name = list.TextCopy(0);
        shape.isPrimaryKey = list.Text(1) == "pk";
        Statement info(database, "SELECT cid, name FROM pragma_index_xinfo(?1) ORDER BY seqno");
        info.BindText(1, shape.name);
        bool isUsable = true;
        while (info.Step()) {
            const bool isRowNumber = info.Integer(0) == -1;
            const int column = isRowNumber ? -1 : Position(table, info.TextCopy(1));
            isUsable = isUsable && (isRowNumber || column >= 0);
            shape.columns.push_back(column);
        }
        if (isUsable) {
            shapes.push_back(std::move(shape));
        }
    }
    const auto rank = [&](const IndexShape& shape) { return shape.Covers(table) ? 0 : shape.isPrimaryKey ? 1 : 2; };
    std::stable_sort(shapes.begin(), shapes.end(),
                     [&](const IndexShape& one, const IndexShape& other) { return rank(one) < rank(other); });
    return shapes;
}

} // namespace velmora::engine::salvage
