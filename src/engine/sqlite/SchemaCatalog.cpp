#include "engine/sqlite/SchemaCatalog.h"

#include "engine/sqlite/Statement.h"

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {


QString TextAt(const Statement& row, int column) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row.Handle(), column)),
                             sqlite3_column_bytes(row.Handle(), column));
}

FieldType DeclaredType(const QString& declaration) {
    struct Meaning {
        QStringView declaration;
        FieldType type;
    };
    static constexpr Meaning meanings[] = {
        {u"TEXT", FieldType::Text},     {u"INTEGER", FieldType::Integer},   {u"SMALLINT", FieldType::Integer},
        {u"BOOLEAN", FieldType::YesNo}, {u"DATETIME", FieldType::DateTime}, {u"REAL", FieldType::Real},
    };
    for (const Meaning& meaning : meanings) {
        if (meaning.declaration.compare(declaration, Qt::CaseInsensitive) == 0) {
            return meaning.type;
        }
    }
    return FieldType::Unknown;
}

// One column of one table, as the store lists them table by table.
constexpr const char* columnsText =
    "SELECT t.name, c.name, c.type, c.pk, t.wr FROM pragma_table_list AS t, pragma_table_info(t.name) AS c "
    "WHERE t.schema = 'main' AND t.type = 'table' AND t.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY t.name, c.cid";

// A key column with its place in the key, from 1.
struct KeyPlace {
    qint64 place;
    int column;
};

void SetKey(CatalogTable& table, std::vector<KeyPlace> places) {
    std::sort(places.begin(), places.end(), [](const KeyPlace& a, const KeyPlace& b) { return a.place < b.place; });
    for (const KeyPlace& place : places) {
        table.key.push_back(place.column);
    }
}

} // namespace

const CatalogTable* SchemaCatalog::FindTable(QStringView name) const {
    const Tables& tables = KnownTables();
    const auto found = tables.find(name.toString().toCaseFolded());
    return found == tables.end() ? nullptr : &*found;
}

const QString* SchemaCatalog::FindQuery(QStringView name) const {
    const Queries& queries = KnownQueries();
    const auto found = queries.find(name.toString().toCaseFolded());
    return found == queries.end() ? nullptr : &found->text;
}

QStringList SchemaCatalog::QueryNames() const {
    QStringList names;
    for (const Query& query : KnownQueries()) {
        names.append(query.name);
    }
    return names;
}

const SchemaCatalog::Tables& SchemaCatalog::KnownTables() const {
    if (!tables_) {
        // The version first: a change in between is then found by the next Refresh instead of never.
        schemaVersion_ = connection_.Number("PRAGMA schema_version");
        tables_ = ReadTables();
    }
    return *tables_;
}

const SchemaCatalog::Queries& SchemaCatalog::KnownQueries() const {
    if (!queries_) {
        queries_ = ReadQueries();
    }
    return *queries_;
}

bool SchemaCatalog::Refresh() {
    bool changed = false;
    if (tables_ && connection_.Number("PRAGMA schema_version") != schemaVersion_) {
        tables_.reset();
        queries_.reset();
        changed = true;
    }
    if (queries_) {
        Queries now = ReadQueries();
        if (now != *queries_) {
            queries_ = std::move(now);
            changed = true;
        }
    }
    return changed;
}

SchemaCatalog::Tables SchemaCatalog::ReadTables() const {
    Tables tables;
    const auto text = std::make_shared<PreparedText>(connection_, columnsText);
    Statement row = text->Acquire({});
    CatalogTable table;
    std::vector<KeyPlace> key;
    bool rowNumberPossible = false;
    const auto finish = [&] {
        if (!table.name.isEmpty()) {
            table.keyIsRowNumber = rowNumberPossible && key.size() == 1;
            SetKey(table, key);
            tables.insert(table.name.toCaseFolded(), table);
        }
    };
    while (row.Step({})) {
        const QString name = TextAt(row, 0);
        if (name != table.name) {
            finish();
            table = CatalogTable{name, {}, {}, false};
            key.clear();
            rowNumberPossible = false;
        }
        const QString declaration = TextAt(row, 2);
        if (const qint64 place = sqlite3_column_int64(row.Handle(), 3); place > 0) {
            const bool withoutRowNumber = sqlite3_column_int(row.Handle(), 4) != 0;
            rowNumberPossible = declaration.compare(u"INTEGER", Qt::CaseInsensitive) == 0 && !withoutRowNumber;
            key.push_back({place, static_cast<int>(table.columns.size())});
        }
        table.columns.push_back(CatalogColumn{TextAt(row, 1), DeclaredType(declaration)});
    }
    finish();
    return tables;
}

SchemaCatalog::Queries SchemaCatalog::ReadQueries() const {
    Queries queries;
    if (FindTable(storedQueryTable) == nullptr) {
        return queries;
    }
    const auto text = std::make_shared<PreparedText>(connection_, "SELECT \"Name\", \"Text\" FROM \"StoredQuery\"");
    Statement row = text->Acquire({});
    while (row.Step({})) {
        const QString name = TextAt(row, 0);
        queries.insert(name.toCaseFolded(), Query{name, TextAt(row, 1)});
    }
    return queries;
}

} // namespace velmora::engine::sqlite
