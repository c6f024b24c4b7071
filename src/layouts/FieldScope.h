#pragma once

#include "engine/Catalog.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmora::layouts {

// A column of one of a layout's tables, spelled as the database has it.
struct FieldName {
    // The table's name in the layout: its alias, or its own name.
    QString table;
    QString field;
    engine::FieldType type = engine::FieldType::Unknown;
    friend bool operator==(const FieldName&, const FieldName&) = default;
};

// The tables that the fields of a formula or layout can belong to. A name that is not found here never gets into a
// query.
class FieldScope {
public:
    // `alias` may be empty. Returns false when the name is taken already.
    bool Add(const engine::CatalogTable& table, const QString& alias);

    // The field "Table.Field", letter case ignored; none when there is no such table or field.
    std::optional<FieldName> Find(QStringView name) const;
    // For people: the tables, or the fields of the table that `name` begins with.
    QString Choices(QStringView name) const;

private:
    struct Entry {
        QString name;
        const engine::CatalogTable* table;
    };
    const Entry* FindTable(QStringView name) const;

    std::vector<Entry> tables_;
};

// The field as a query names it: [Table].[Field].
QString QueryName(const FieldName& field);

} // namespace velmora::layouts
