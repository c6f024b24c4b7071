#include "app/db/RowPrinter.h"

#include <QHash>

namespace velmora::db {

namespace {

using engine::Field;
using engine::FieldType;

// What would break the lines and columns is written with a backslash.
QByteArray Escaped(QByteArray text) {
    return text.replace('\\', "\\\\").replace('\t', "\\t").replace('\r', "\\r").replace('\n', "\\n");
}

QByteArray Cell(const Field& field, FieldType type) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        return {};
    case Field::Kind::Text:
        return Escaped(QByteArray(field.Utf8().data(), static_cast<qsizetype>(field.Utf8().size())));
    default:
        return type == FieldType::YesNo ? QByteArray(field.ToBool() ? "True" : "False") : field.ToText().toUtf8();
    }
}

// The field names as the header line shows them: "Table.Field" where two fields have one name.
QByteArrayList HeaderNames(const std::vector<engine::FieldDescription>& fields) {
    QHash<QString, int> count;
    for (const engine::FieldDescription& field : fields) {
        ++count[field.name.toCaseFolded()];
    }
    QByteArrayList names;
    for (const engine::FieldDescription& field : fields) {
        const bool ambiguous = count[field.name.toCaseFolded()] > 1 && !field.table.isEmpty();
        names += Escaped((ambiguous ? field.table + u'.' + field.name : field.name).toUtf8());
    }
    return names;
}

} // namespace

void PrintRows(engine::Recordset& rows, Output& output) {
    const std::vector<engine::FieldDescription>& fields = rows.Fields();
    output.Add(HeaderNames(fields).join('\t') + '\n');
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        QByteArrayList cells;
        for (size_t n = 0; n < fields.size(); ++n) {
            cells += Cell(rows.FieldAt(static_cast<int>(n)), fields[n].type);
        }
        output.Add(cells.join('\t') + '\n');
    }
}

} // namespace velmora::db
