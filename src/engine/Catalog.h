#pragma once

#include "engine/FieldType.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace velmora::engine {

struct CatalogColumn {
    QString name;
    FieldType type = FieldType::Unknown;
};

struct CatalogTable {
    QString name;
    std::vector<CatalogColumn> columns;
    // Indexes into `columns` of the primary key, in key order; empty for a table without a declared key.
    std::vector<int> key;
};

// The tables and stored queries that names in a text can mean. Look-ups ignore letter case.
class Catalog {
public:
    virtual ~Catalog() = default;
    // Null when there is no such table. The pointer stays good until the database's schema changes.
    virtual const CatalogTable* FindTable(QStringView name) const = 0;
    // The stored query's text in the dialect, or null.
    virtual const QString* FindQuery(QStringView name) const = 0;
};

} // namespace velmora::engine
