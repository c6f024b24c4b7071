#include "app/db/RowPrinter.h"

#include <QHash>

namespace velmora::db {

namespace {

using engine::Field;
using engine::FieldType;

// What would break the lines and columns is written with a backslash.
void AddEscaped(std::string_view text, Output& output) {
    size_t begin = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        const char* escaped = nullptr;
        switch (text[at]) {
        case '\t':
            escaped = "\\t";
            break;
        case '\r':
            escaped = "\\r";
            break;
        case '\n':
            escaped = "\\n";
            break;
        case '\\':
            escaped = "\\\\";
            break;
        default:
            continue;
        }
        output.Add(QByteArrayView(text.data() + begin, static_cast<qsizetype>(at - begin)));
        output.Add(QByteArrayView(escaped, 2));
        begin = at + 1;
    }
    output.Add(QByteArrayView(text.data() + begin, static_cast<qsizetype>(text.size() - begin)));
}

void AddEscaped(const QString& text, Output& output) {
    const QByteArray bytes = text.toUtf8();
    AddEscaped(std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())), output);
}

void AddField(const Field& field, FieldType type, Output& output) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        break;
    case Field::Kind::Text:
        AddEscaped(field.Utf8(), output);
        break;
    case Field::Kind::Integer:
    case Field::Kind::Real:
        if (type == FieldType::YesNo) {
            output.Add(field.ToBool() ? QByteArrayView("True") : QByteArrayView("False"));
        } else {
            output.Add(field.ToText());
        }
        break;
    }
}

} // namespace

QStringList HeaderNames(const std::vector<engine::FieldDescription>& fields) {
    QHash<QString, int> count;
    for (const engine::FieldDescription& field : fields) {
        ++count[field.name.toCaseFolded()];
    }
    QStringList names;
    for (const engine::FieldDescription& field : fields) {
        const bool ambiguous = count[field.name.toCaseFolded()] > 1 && !field.table.isEmpty();
        names.append(ambiguous ? field.table + u'.' + field.name : field.name);
    }
    return names;
}

void PrintRows(engine::Recordset& rows, Output& output) {
    const std::vector<engine::FieldDescription>& fields = rows.Fields();
    const QStringList names = HeaderNames(fields);
    for (qsizetype n = 0; n < names.size(); ++n) {
        if (n > 0) {
            output.Add('\t');
        }
        AddEscaped(names[n], output);
    }
    output.Add('\n');
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        for (size_t n = 0; n < fields.size(); ++n) {
            if (n > 0) {
                output.Add('\t');
            }
            AddField(rows.FieldAt(static_cast<int>(n)), fields[n].type, output);
        }
        output.Add('\n');
    }
}

} // namespace velmora::db
