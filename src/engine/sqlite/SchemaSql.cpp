#include "engine/sqlite/SchemaSql.h"

#include "engine/sqlite/Statement.h"

#include <QByteArrayList>

namespace velmora::engine::sqlite {

namespace {

// The declared types by which every program of the suite knows how to read a column.
QByteArray TypeSql(ColumnType type) {
    switch (type) {
    case ColumnType::Text:
        return "TEXT COLLATE NOCASE";
    case ColumnType::ExactText:
        return "TEXT";
    case ColumnType::Integer:
        return "INTEGER";
    case ColumnType::SmallInteger:
        return "SMALLINT";
    case ColumnType::Identity:
        return "INTEGER PRIMARY KEY";
    case ColumnType::Sequence:
        return "INTEGER PRIMARY KEY AUTOINCREMENT";
    case ColumnType::YesNo:
        return "BOOLEAN DEFAULT 0";
    case ColumnType::Real:
        return "REAL";
    case ColumnType::DateTime:
        return "DATETIME";
    }
    return {};
}

QByteArray Names(const QStringList& columns) {
    QByteArrayList names;
    for (const QString& column : columns) {
        names.append(Quoted(column.toUtf8()));
    }
    return '(' + names.join(", ") + ')';
}

} // namespace

QByteArray CreateTableSql(const TableDefinition& table) {
    QByteArrayList lines;
    for (const ColumnDefinition& column : table.columns) {
        const bool isRequired = column.isRequired || table.key.contains(column.name);
        lines.append("    " + Quoted(column.name.toUtf8()) + ' ' + TypeSql(column.type) +
                     (isRequired ? " NOT NULL" : ""));
    }
    if (!table.key.isEmpty()) {
        lines.append("    PRIMARY KEY " + Names(table.key));
    }
    return "CREATE TABLE IF NOT EXISTS " + Quoted(table.name.toUtf8()) + " (\n" + lines.join(",\n") + "\n)";
}

QByteArray CreateIndexSql(const TableDefinition& table, const IndexDefinition& index) {
    return (index.isUnique ? "CREATE UNIQUE INDEX IF NOT EXISTS " : "CREATE INDEX IF NOT EXISTS ") +
           Quoted(index.name.toUtf8()) + " ON " + Quoted(table.name.toUtf8()) + ' ' + Names(index.columns);
}

SchemaSql::SchemaSql(const Schema& schema) {
    for (const TableDefinition& table : schema.tables) {
        tables.push_back(CreateTableSql(table));
        for (const IndexDefinition& index : table.indexes) {
            (index.isUnique ? uniqueIndexes : otherIndexes).push_back(CreateIndexSql(table, index));
        }
    }
}

} // namespace velmora::engine::sqlite
