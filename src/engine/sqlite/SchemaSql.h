#pragma once

#include "engine/Schema.h"

#include <QByteArray>

#include <vector>

namespace velmora::engine::sqlite {

// A schema in the store's SQL, in the order in which a database is filled fastest: unique indexes before the other
// ones, all behind the rows. Statements make nothing that is there already.
struct SchemaSql {
    explicit SchemaSql(const Schema& schema);

    std::vector<QByteArray> tables;
    std::vector<QByteArray> uniqueIndexes;
    std::vector<QByteArray> otherIndexes;
};

QByteArray CreateTableSql(const TableDefinition& table);
QByteArray CreateIndexSql(const TableDefinition& table, const IndexDefinition& index);

} // namespace velmora::engine::sqlite
