#include "site/StoredQueries.h"

#include "site/Resource.h"

#include <QCryptographicHash>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora {

namespace {

// "<SHA-256> <name>" for every text that was ever shipped.
QStringList ShippedTexts() {
    return ReadResource(u"shipped-queries.txt"_s).split(u'\n', Qt::SkipEmptyParts);
}

QString Entry(const QString& name, const QString& text) {
    const QByteArray hash = QCryptographicHash::hash(text.trimmed().toUtf8(), QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(hash) + u' ' + name;
}

std::vector<StoredQueryText> QueriesFirstShipped(int from, int to) {
    const QStringList shipped = ShippedTexts();
    std::vector<StoredQueryText> queries = StoredQueryTexts();
    std::erase_if(queries, [&](const StoredQueryText& query) {
        const auto first = std::find_if(shipped.begin(), shipped.end(),
                                        [&](const QString& entry) { return entry.endsWith(u' ' + query.name); });
        const auto line = first - shipped.begin();
        return line < from || line >= to;
    });
    return queries;
}

std::unique_ptr<engine::Recordset> StoredQueries(engine::Database& database) {
    return database.OpenRecordset(u"StoredQuery", engine::RecordsetKind::Updatable);
}

} // namespace

std::vector<StoredQueryText> StoredQueryTexts() {
    std::vector<StoredQueryText> queries;
    for (const QString& file : ResourceNames(u"queries"_s)) {
        queries.push_back({file.chopped(u".sql"_s.size()), ReadResource(u"queries/"_s + file).trimmed()});
    }
    return queries;
}

int StoredQueryRevision() {
    return static_cast<int>(ShippedTexts().size());
}

QStringList AddMissingQueries(engine::Database& database, int from, int to) {
    const QStringList present = database.QueryNames();
    const auto queries = StoredQueries(database);
    QStringList added;
    for (const StoredQueryText& query : QueriesFirstShipped(from, to)) {
        if (!present.contains(query.name, Qt::CaseInsensitive)) {
            queries->AddNew();
            queries->Set("Name", query.name);
            queries->Set("Text", query.text);
            queries->Update();
            added.append(query.name);
        }
    }
    return added;
}

QStringList NamesTakenBySite(engine::Database& database, int revision) {
    const QStringList shipped = ShippedTexts();
    QStringList taken;
    for (const StoredQueryText& query : QueriesFirstShipped(revision, StoredQueryRevision())) {
        const QString* text = database.Schema().FindQuery(query.name);
        if (database.Schema().FindTable(query.name) != nullptr ||
            (text != nullptr && !shipped.contains(Entry(query.name, *text)))) {
            taken.append(query.name);
        }
    }
    return taken;
}

QStringList RenewQueries(engine::Database& database) {
    const std::vector<StoredQueryText> own = StoredQueryTexts();
    const QStringList shipped = ShippedTexts();
    QStringList remarks;
    for (const auto queries = StoredQueries(database); !queries->EndOfFile(); queries->MoveNext()) {
        const QString name = (*queries)["Name"].ToText();
        const QString text = (*queries)["Text"].ToText();
        const auto query = std::find_if(own.begin(), own.end(), [&](const StoredQueryText& candidate) {
            return candidate.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (query == own.end() || query->text == text.trimmed()) {
            continue;
        }
        if (shipped.contains(Entry(query->name, text))) {
            queries->Edit();
            queries->Set("Text", query->text);
            queries->Update();
            remarks.append(u"The stored query %1 has the program's corrected text."_s.arg(name));
        } else {
            remarks.append(u"The stored query %1 was changed by the site and stays as it is."_s.arg(name));
        }
    }
    return remarks;
}

} // namespace velmora
