#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::engine {

// What a database consists of, in no store's words: each store writes its own statements from it and checks itself
// against it.

enum class ColumnType {
    Text,         // compares without regard to the case of the letters A to Z
    ExactText,    // every letter counts
    Integer,      // 32 bits
    SmallInteger, // 16 bits
    Identity,     // the key of its table: a whole number, the next one where a row gives none
    Sequence,     // the same; a deleted row's number is never given out again
    YesNo,        // No where a row says nothing
    Real,
    DateTime,
};

struct ColumnDefinition {
    QString name;
    ColumnType type;
    bool isRequired = false;
};

struct IndexDefinition {
    QString name;
    QStringList columns;
    bool isUnique = false;
};

struct TableDefinition {
    QString name;
    std::vector<ColumnDefinition> columns;
    // The key's columns, which are never empty. None for a table whose key is an Identity or a Sequence, or without
    // key.
    QStringList key{};
    // Between equally good indexes a store takes the last.
    std::vector<IndexDefinition> indexes{};
    // The first version of the schema that has the table.
    int since = 1;
};

struct Schema {
    int version = 0;
    std::vector<TableDefinition> tables{};

    // What a database of that version has.
    std::vector<TableDefinition> TablesOf(int siteVersion) const {
        std::vector<TableDefinition> present = tables;
        std::erase_if(present, [&](const TableDefinition& table) { return table.since > siteVersion; });
        return present;
    }
};

// Where a database holds its schema's version, in the table's columns Name and Value. One without it has version 1.
inline constexpr QStringView propertyTable = u"SiteProperty";
inline constexpr QStringView schemaVersionProperty = u"SchemaVersion";

} // namespace velmora::engine
