#pragma once

#include "engine/sqlite/salvage/TableShape.h"
#include "engine/sqlite/salvage/TreeReader.h"

#include <QString>
#include <QStringList>

#include <map>
#include <set>
#include <vector>

namespace velmora::engine::salvage {

// A few rows by name and the number of all.
struct RowList {
    qint64 count = 0;
    QStringList examples;

    void Add(const QString& row);
    // "3 rows (ID 7; ID 12; ID 30)"
    QString ToText() const;
};

// Writes the rows of one damaged table into the table of the same name in a new database.
class TableCopier {
public:
    // `shape` is how the rows lie in the damaged file, with texts in `encoding`. Columns that the new table does not
    // have are left out.
    TableCopier(sqlite3* target, TableShape shape, unsigned char encoding);

    const TableShape& Shape() const { return shape_; }

    // Copies the rows of a leaf; false, with nothing copied, when they are plainly another table's.
    bool TakeLeaf(TreeReader& reader, const BtreePage& leaf);
    // True when every row of a leaf fits this table; one whose long text is broken off elsewhere does not count.
    bool FitsLeaf(TreeReader& reader, const BtreePage& leaf);
    // The row in an entry of a table without row numbers.
    void TakeEntry(TreeReader& reader, const Cell& cell);
    // One row from another source, its fields in the order of the shape; false when the new table refuses it.
    bool TakeRow(qint64 key, std::span<const RecordField> values);

    bool HasRow(qint64 key);
    // The row as a user would name it: by its key, else by its number.
    QString NameOf(qint64 key, std::span<const RecordField> values) const;

    qint64 Saved() const { return saved_; }
    // Numbers of rows whose fields could not be read.
    const std::set<qint64>& Unreadable() const { return unreadable_; }
    qint64 UnreadableEntries() const { return unreadableEntries_; }
    // Rows left out because an earlier one has the same key, because the table refuses them for another reason; and
    // rows that were copied, but with a text that is none.
    const RowList& Duplicates() const { return duplicates_; }
    const RowList& Refused() const { return refused_; }
    const RowList& Doubtful() const { return doubtful_; }

private:
    bool Decode(TreeReader& reader, const Cell& cell);
    sqlite::Statement& InsertFor(size_t fields);
    void Bind(sqlite3_stmt* insert, int number, const RecordField& value) const;
    bool HasBrokenText(std::span<const RecordField> values) const;

    sqlite3* target_;
    TableShape shape_;
    unsigned char encoding_;
    // For each stored column whether the new table takes it.
    std::vector<bool> isTaken_;
    // What the row number is called here; empty where there is none.
    QByteArray rowNumberName_;
    // By the number of fields: rows written before a column was added are shorter, and get its default.
    std::map<size_t, sqlite::Statement> inserts_;
    std::optional<sqlite::Statement> find_;
    std::vector<RecordField> values_;

    qint64 saved_ = 0;
    std::set<qint64> unreadable_;
    qint64 unreadableEntries_ = 0;
    RowList duplicates_;
    RowList refused_;
    RowList doubtful_;
};

} // namespace velmora::engine::salvage
