#pragma once

#include "engine/Catalog.h"
#include "engine/sqlite/Connection.h"

#include <QHash>
#include <QMap>
#include <QStringList>

#include <memory>
#include <optional>

namespace velmora::engine::sqlite {

// The table that holds the stored queries of a site.
inline constexpr QStringView storedQueryTable = u"StoredQuery";

// What the database file itself says about its tables and stored queries. Read when first asked for, and kept until
// Refresh finds that it changed.
class SchemaCatalog final : public Catalog {
public:
    explicit SchemaCatalog(const Connection& connection) : connection_(connection) {}

    const CatalogTable* FindTable(QStringView name) const override;
    const QString* FindQuery(QStringView name) const override;
    // In alphabetical order.
    QStringList QueryNames() const;

    // True when tables or stored queries differ from what was read before, which is then forgotten: texts compiled
    // earlier no longer hold.
    bool Refresh();
    // Forgets the stored queries, which this program itself may have changed.
    void ForgetQueries() { queries_.reset(); }

private:
    struct Query {
        QString name;
        QString text;
        friend bool operator==(const Query&, const Query&) = default;
    };
    using Tables = QHash<QString, CatalogTable>;
    using Queries = QMap<QString, Query>;

    const Tables& KnownTables() const;
    const Queries& KnownQueries() const;
    Tables ReadTables() const;
    Queries ReadQueries() const;

    const Connection& connection_;
    // By name in folded letters.
    mutable std::optional<Tables> tables_;
    mutable std::optional<Queries> queries_;
    mutable qint64 schemaVersion_ = 0;
};

} // namespace velmora::engine::sqlite
