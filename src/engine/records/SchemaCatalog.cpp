#include "engine/records/SchemaCatalog.h"

#include <array>

namespace velmora::engine::records {

const CatalogTable* SchemaCatalog::FindTable(QStringView name) const {
    const auto found = tables_.find(name.toString().toCaseFolded());
    return found == tables_.end() ? nullptr : &*found;
}

const QString* SchemaCatalog::FindQuery(QStringView name) const {
    const auto found = queries_.find(name.toString().toCaseFolded());
    return found == queries_.end() ? nullptr : &found->text;
}

QStringList SchemaCatalog::QueryNames() const {
    QStringList names;
    for (const Query& query : queries_) {
        names.append(query.name);
    }
    return names;
}

void SchemaCatalog::Read() {
    if (!schemaVersion_) {
        ReadTables();
    }
    if (!queriesAreRead_) {
        queries_ = ReadQueries();
        queriesAreRead_ = true;
    }
}

bool SchemaCatalog::Refresh() {
    bool changed = false;
    if (schemaVersion_ && connection_.SchemaVersion() != *schemaVersion_) {
        ReadTables();
        changed = true;
    }
    if (queriesAreRead_) {
        Queries now = ReadQueries();
        changed = changed || now != queries_;
        queries_ = std::move(now);
    }
    return changed;
}

void SchemaCatalog::ReadTables() {
    // The version first: a change in between is then found by the next Refresh instead of never.
    const qint64 version = connection_.SchemaVersion();
    tables_.clear();
    for (CatalogTable& table : connection_.ReadTables()) {
        tables_[table.name.toCaseFolded()] = std::move(table);
    }
    schemaVersion_ = version;
}

SchemaCatalog::Queries SchemaCatalog::ReadQueries() {
    Queries queries;
    if (FindTable(storedQueryTable) == nullptr) {
        return queries;
    }
    const auto rows = statements_.Acquire("SELECT \"Name\", \"Text\" FROM \"StoredQuery\"", {});
    std::array<Field, 2> row;
    while (rows->Step({})) {
        rows->ReadRow(row);
        const QString name = row[0].ToText();
        queries.insert(name.toCaseFolded(), Query{name, row[1].ToText()});
    }
    return queries;
}

} // namespace velmora::engine::records
