#include "data/SiteSchema.h"

#include "data/Resource.h"

#include <QRegularExpression>

namespace velmora {

namespace {

// The names behind every "CREATE <what>" of the script, with or without quotes.
QStringList CreatedNames(const QString& script, const QString& what) {
    const QRegularExpression statement(QStringLiteral("^CREATE (?:UNIQUE )?%1 (?:\"([^\"]+)\"|(\\w+))").arg(what),
                                       QRegularExpression::MultilineOption);
    QStringList names;
    for (auto found = statement.globalMatch(script); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        names.append(match.captured(1) + match.captured(2));
    }
    return names;
}

} // namespace

QString SiteSchemaText() {
    return ReadResource(QStringLiteral("schema.sql"));
}

std::vector<StoredQueryText> StoredQueryTexts() {
    std::vector<StoredQueryText> queries;
    for (const QString& file : ResourceNames(QStringLiteral("queries"))) {
        queries.push_back(
            {file.chopped(QStringLiteral(".sql").size()), ReadResource(QStringLiteral("queries/") + file).trimmed()});
    }
    return queries;
}

engine::OpenOptions SiteOptions() {
    const QString script = SiteSchemaText();
    engine::OpenOptions options;
    options.expectedTables = CreatedNames(script, QStringLiteral("TABLE"));
    options.expectedIndexes = CreatedNames(script, QStringLiteral("INDEX"));
    return options;
}

std::unique_ptr<engine::Database> OpenSite(const QString& path) {
    return engine::Database::Open(path, SiteOptions());
}

} // namespace velmora
