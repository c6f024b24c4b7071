#include "layouts/FieldScope.h"

#include <QStringList>

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

bool FieldScope::Add(const engine::CatalogTable& table, const QString& alias) {
    const QString name = alias.isEmpty() ? table.name : alias;
    if (FindTable(name) != nullptr) {
        return false;
    }
    tables_.push_back({name, &table});
    return true;
}

const FieldScope::Entry* FieldScope::FindTable(QStringView name) const {
    const auto found = std::find_if(tables_.begin(), tables_.end(), [&](const Entry& entry) {
        return name.compare(entry.name, Qt::CaseInsensitive) == 0;
    });
    return found == tables_.end() ? nullptr : &*found;
}

std::optional<FieldName> FieldScope::Find(QStringView name) const {
    const qsizetype point = name.lastIndexOf(u'.');
    if (point < 0) {
        return std::nullopt;
    }
    const Entry* entry = FindTable(name.first(point));
    if (entry == nullptr) {
        return std::nullopt;
    }
    for (const engine::CatalogColumn& column : entry->table->columns) {
        if (name.sliced(point + 1).compare(column.name, Qt::CaseInsensitive) == 0) {
            return FieldName{entry->name, column.name, column.type};
        }
    }
    return std::nullopt;
}

QString FieldScope::Choices(QStringView name) const {
    QStringList names;
    if (const Entry* entry = FindTable(name.first(std::max<qsizetype>(name.lastIndexOf(u'.'), 0)))) {
        for (const engine::CatalogColumn& column : entry->table->columns) {
            names += column.name;
        }
        return u"the fields of %1 are %2"_s.arg(entry->name, names.join(u", "_s));
    }
    for (const Entry& entry : tables_) {
        names += entry.name;
    }
    return names.isEmpty() ? u"no table is named yet"_s : u"the tables are %1"_s.arg(names.join(u", "_s));
}

QString QueryName(const FieldName& field) {
    return u"[%1].[%2]"_s.arg(field.table, field.field);
}

} // namespace velmora::layouts
