#pragma once

#include "engine/sqlite/Statement.h"
#include "engine/sqlite/salvage/BtreePage.h"

#include <QByteArray>

#include <optional>
#include <span>
#include <vector>

namespace velmora::engine::salvage {

// What a field can hold where nobody stored anything odd.
enum class Content { Anything, Number, Text, NumberOrText };

struct ColumnShape {
    QByteArray name;
    Content content = Content::Anything;
    // Worked out by the store, which takes no value for it.
    bool isGenerated = false;
};

// How the rows of a table lie in the file.
struct TableShape {
    QByteArray name;
    // The columns that a record holds, in its order.
    std::vector<ColumnShape> stored;
    // Which of them stands for the row number (its field in the record is empty); -1 for none.
    int rowNumberColumn = -1;
    // The columns of the primary key among them, in the key's order.
    std::vector<int> key;
    // False for a table whose rows lie in its key's tree.
    bool hasRowNumbers = true;

    // True for a record that fits in every field.
    bool Fits(std::span<const RecordField> values) const;
    // False for a record that is plainly another table's: too many fields, or most of the wrong kind.
    bool Allows(std::span<const RecordField> values) const;

private:
    // The number of fields of the wrong kind.
    int Mismatches(std::span<const RecordField> values) const;
};

// How the entries of an index lie in the file.
struct IndexShape {
    QByteArray name;
    // For each field of an entry the stored column of the table, -1 for the row number; in the order of the entry.
    std::vector<int> columns;
    // True for the index of the primary key.
    bool isPrimaryKey = false;

    // True when an entry holds every column of the table.
    bool Covers(const TableShape& table) const;
};

// The shape of a table that is in `database`; none for one that is not, or is not stored in pages (a virtual table).
std::optional<TableShape> ReadTableShape(sqlite3* database, const QByteArray& table);

// The indexes of such a table that have an entry for every row; those on expressions are left out. Best first: the
// ones that hold whole rows, the primary key's, the others.
std::vector<IndexShape> ReadIndexShapes(sqlite3* database, const TableShape& table);

} // namespace velmora::engine::salvage
