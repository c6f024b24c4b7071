#pragma once

#include "engine/Catalog.h"
#include "engine/records/StatementCache.h"

#include <QHash>
#include <QMap>
#include <QStringList>

#include <optional>

namespace velmora::engine::records {

// The table that holds the stored queries of a site.
inline constexpr QStringView storedQueryTable = u"StoredQuery";

// What the database itself says about its tables and stored queries, as it was when last read.
class SchemaCatalog final : public Catalog {
public:
    SchemaCatalog(StoreConnection& connection, StatementCache& statements)
        : connection_(connection), statements_(statements) {}

    const CatalogTable* FindTable(QStringView name) const override;
    const QString* FindQuery(QStringView name) const override;
    // In alphabetical order.
    QStringList QueryNames() const;

    // Reads what has not been read yet or was forgotten.
    void Read();
    // True when tables or stored queries differ from what was read before: texts compiled earlier no longer hold.
    bool Refresh();
    // Forgets the stored queries, which this program itself may have changed.
    void ForgetQueries() { queriesAreRead_ = false; }

private:
    struct Query {
        QString name;
        QString text;
        friend bool operator==(const Query&, const Query&) = default;
    };
    using Queries = QMap<QString, Query>;

    void ReadTables();
    Queries ReadQueries();

    StoreConnection& connection_;
    StatementCache& statements_;
    // By name in folded letters.
    QHash<QString, CatalogTable> tables_;
    Queries queries_;
    std::optional<qint64> schemaVersion_; // none: the tables have not been read
    bool queriesAreRead_ = false;
};

} // namespace velmora::engine::records
