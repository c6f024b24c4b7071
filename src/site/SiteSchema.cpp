#include "site/SiteSchema.h"

#include "site/Resource.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace velmora {

namespace {

using Column = engine::ColumnType;

constexpr std::pair<QStringView, Column> columnTypes[] = {{u"text", Column::Text},
                                                          {u"exact-text-required", Column::ExactText},
                                                          {u"integer", Column::Integer},
                                                          {u"identity", Column::Identity},
                                                          {u"small-integer", Column::SmallInteger},
                                                          {u"sequence", Column::Sequence},
                                                          {u"yes-no", Column::YesNo},
                                                          {u"real", Column::Real},
                                                          {u"date-time", Column::DateTime}};

// Adds what a line below the table's name says.
void AddTo(engine::TableDefinition& table, const QString& word, const QStringList& names) {
    if (word == u"key") {
        table.key = names;
    } else if (word == u"index" || word == u"unique") {
        table.indexes.push_back({names.front(), names.mid(1), word == u"unique"});
    } else if (word == u"since") {
        table.since = names.front().toInt();
    } else {
        const auto* type = std::ranges::find(columnTypes, word, [](const auto& each) { return each.first; });
        if (type == std::end(columnTypes)) {
            throw std::logic_error("the schema has no " + word.toStdString());
        }
        for (const QString& name : names) {
            table.columns.push_back({name, type->second, word.endsWith(u"-required")});
        }
    }
}

} // namespace

engine::Schema SiteSchema() {
    engine::Schema schema{.version = 1};
    for (const QString& line : ReadResource(u"site-schema.txt"_s).split(u'\n', Qt::SkipEmptyParts)) {
        QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        if (words.front().startsWith(u'#')) {
            continue;
        }
        if (!line.startsWith(u' ')) {
            schema.tables.push_back({line, {}});
        } else {
            const QString word = words.takeFirst();
            AddTo(schema.tables.back(), word, words);
            schema.version = std::max(schema.version, schema.tables.back().since);
        }
    }
    return schema;
}

} // namespace velmora
