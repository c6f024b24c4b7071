#include "site/SiteSchema.h"

#include "site/Resource.h"

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

// "Table.Column" for every column of the script, which gives each a line of its own.
QStringList CreatedColumns(const QString& script) {
    const QRegularExpression table(QStringLiteral("^CREATE TABLE (?:\"([^\"]+)\"|(\\w+)) \\("));
    const QRegularExpression column(QStringLiteral("^    (?:\"([^\"]+)\"|(\\w+)) [A-Z]"));
    QStringList names;
    QString current;
    for (const QString& line : script.split(u'\n')) {
        if (const auto found = table.match(line); found.hasMatch()) {
            current = found.captured(1) + found.captured(2);
        } else if (const auto inside = column.match(line); inside.hasMatch() && inside.captured(2) != u"PRIMARY") {
            names.append(current + u'.' + inside.captured(1) + inside.captured(2));
        }
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
    options.expectedColumns = CreatedColumns(script);
    options.expectedIndexes = CreatedNames(script, QStringLiteral("INDEX"));
    return options;
}

} // namespace velmora
