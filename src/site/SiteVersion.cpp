#include "site/SiteVersion.h"

#include "site/SiteSchema.h"
#include "site/StoredQueries.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora {

namespace {

constexpr QStringView queryRevisionProperty = u"StoredQueryRevision";

struct SiteVersion {
    int schema = 1;
    int queries = firstQueryRevision;

    bool IsOlderThan(const SiteVersion& other) const { return schema < other.schema || queries < other.queries; }
};

SiteVersion OwnVersion() {
    return {SiteSchema().version, StoredQueryRevision()};
}

SiteVersion VersionOf(engine::Database& database) {
    SiteVersion version;
    try {
        const auto rows = database.OpenRecordset(engine::propertyTable);
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            const QString name = (*rows)["Name"].ToText();
            const int number = (*rows)["Value"].ToText().toInt();
            if (name.compare(engine::schemaVersionProperty, Qt::CaseInsensitive) == 0) {
                version.schema = std::max(version.schema, number);
            } else if (name.compare(queryRevisionProperty, Qt::CaseInsensitive) == 0) {
                version.queries = std::max(version.queries, number);
            }
        }
    } catch (const engine::EngineError& error) {
        if (error.Kind() != engine::EngineErrorNumber::UnknownTable) {
            throw;
        }
    }
    return version;
}

void SetProperty(engine::Database& database, QStringView name, int number) {
    const QString text = QString::number(number);
    if (database.Execute(u"UPDATE SiteProperty SET [Value] = \"%2\" WHERE [Name] = \"%1\""_s.arg(name, text)) == 0) {
        database.Execute(u"INSERT INTO SiteProperty ([Name], [Value]) VALUES (\"%1\", \"%2\")"_s.arg(name, text));
    }
}

// What was done, for the log.
QString Upgrade(engine::Database& database) {
    engine::Transaction transaction(database);
    const SiteVersion own = OwnVersion();
    const SiteVersion before = VersionOf(database);
    if (!before.IsOlderThan(own)) {
        return {}; // another program was first
    }
    QStringList lines;
    if (before.schema < own.schema) {
        for (const engine::TableDefinition& table : SiteSchema().tables) {
            if (table.since > before.schema) {
                database.AddTable(table);
            }
        }
        SetProperty(database, engine::schemaVersionProperty, own.schema);
        lines.append(u"The database \"%1\" was brought from version %2 to version %3."_s.arg(database.Location())
                         .arg(before.schema)
                         .arg(own.schema));
    }
    if (const QStringList taken = NamesTakenBySite(database, before.queries); !taken.isEmpty()) {
        lines.append(u"The site has a table or query of its own named %1, a name that the program needs: its stored "
                     "queries stay as they are until the site's has another name."_s.arg(taken.join(u", "_s)));
    } else if (before.queries < own.queries) {
        lines += RenewQueries(database);
        for (const QString& name : AddMissingQueries(database, before.queries, own.queries)) {
            lines.append(u"The stored query %1 was added."_s.arg(name));
        }
        SetProperty(database, queryRevisionProperty, own.queries);
    }
    transaction.Commit();
    return lines.join(u'\n');
}

} // namespace

void WriteSiteVersion(engine::NewDatabase& database) {
    const SiteVersion own = OwnVersion();
    const auto properties = database.Load(engine::propertyTable.toString(), {u"Name"_s, u"Value"_s});
    properties->Add({engine::schemaVersionProperty.toString(), QString::number(own.schema)});
    properties->Add({queryRevisionProperty.toString(), QString::number(own.queries)});
}

bool IsOutdated(engine::Database& database) {
    return VersionOf(database).IsOlderThan(OwnVersion());
}

QString BringUpToDate(engine::Database& database) {
    try {
        return Upgrade(database);
    } catch (const engine::EngineError& error) {
        return u"The database \"%1\" could not be brought up to date: %2"_s.arg(database.Location(), error.Description());
    }
}

QStringList PutBackLostQueries(engine::Database& database) {
    return AddMissingQueries(database, 0, VersionOf(database).queries);
}

std::optional<QString> WhyOutdated(engine::Database& database) {
    const int present = VersionOf(database).schema;
    const int own = SiteSchema().version;
    if (present >= own) {
        return std::nullopt;
    }
    return u"The database \"%1\" has version %2; this needs version %3, and no program that may change the database "
           u"has "
           "brought it up to date yet."_s.arg(database.Location())
               .arg(present)
               .arg(own);
}

} // namespace velmora
