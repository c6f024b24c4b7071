#include "engine/sqlite/RecordWriter.h"

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

QByteArray Quoted(const QString& name) {
    QByteArray quoted = name.toUtf8();
    quoted.replace('"', "\"\"");
    return '"' + quoted + '"';
}

QByteArray Place(std::size_t number) {
    return '?' + QByteArray::number(static_cast<qulonglong>(number));
}

QByteArray Joined(const std::vector<QByteArray>& parts, const char* separator) {
    QByteArray text;
    for (const QByteArray& part : parts) {
        text += text.isEmpty() ? part : separator + part;
    }
    return text;
}

std::vector<QByteArray> KeyColumns(const dialect::BaseTable& table) {
    std::vector<QByteArray> columns;
    for (const QString& column : table.keyColumns) {
        columns.push_back(Quoted(column));
    }
    if (columns.empty()) {
        columns.push_back("rowid");
    }
    return columns;
}

QByteArray WhereKey(const dialect::BaseTable& table, std::size_t firstPlace) {
    std::vector<QByteArray> conditions;
    for (const QByteArray& column : KeyColumns(table)) {
        conditions.push_back(column + " IS " + Place(firstPlace++));
    }
    return " WHERE " + Joined(conditions, " AND ");
}

// True while the column still holds the value at `place`. A yes stays a yes whatever its number; a text that differs
// in letter case only is another one.
QByteArray StillHolds(const FieldChange& change, std::size_t place) {
    const QByteArray column = Quoted(change.column);
    if (change.type == FieldType::YesNo) {
        return '(' + column + " <> 0) IS " + Place(place);
    }
    return column + " COLLATE BINARY IS " + Place(place);
}

Field ComparedTo(const FieldChange& change) {
    if (change.type == FieldType::YesNo && !change.before.IsNull()) {
        const bool isText = change.before.StoredKind() == Field::Kind::Text;
        return Field(FieldType::YesNo, qint64{isText || change.before.ToBool()});
    }
    return change.before;
}

// Places of an update and of the look at why it was refused: new values, key, old values.
void BindAll(Statement& statement, const std::vector<Field>& key, const std::vector<FieldChange>& changes) {
    int place = 0;
    for (const FieldChange& change : changes) {
        statement.Bind(++place, change.after);
    }
    for (const Field& part : key) {
        statement.Bind(++place, part);
    }
    for (const FieldChange& change : changes) {
        statement.Bind(++place, ComparedTo(change));
    }
}

} // namespace

void RecordWriter::Update(const dialect::BaseTable& table, const std::vector<Field>& key,
                          const std::vector<FieldChange>& changes) {
    std::vector<QByteArray> assignments;
    QByteArray unchanged;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        assignments.push_back(Quoted(changes[i].column) + " = " + Place(i + 1));
        unchanged += " AND " + StillHolds(changes[i], changes.size() + key.size() + i + 1);
    }
    const QByteArray text = "UPDATE " + Quoted(table.table) + " SET " + Joined(assignments, ", ") +
                            WhereKey(table, changes.size() + 1) + unchanged;
    {
        Statement statement = session_.Statements().Acquire(text, sql_);
        BindAll(statement, key, changes);
        statement.Step(sql_);
    }
    if (sqlite3_changes64(session_.Store().Handle()) != 1) {
        ExplainRefusal(table, key, changes);
    }
}

void RecordWriter::ExplainRefusal(const dialect::BaseTable& table, const std::vector<Field>& key,
                                  const std::vector<FieldChange>& changes) {
    std::vector<QByteArray> conditions;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        conditions.push_back(StillHolds(changes[i], changes.size() + key.size() + i + 1));
    }
    Statement statement = session_.Statements().Acquire("SELECT " + Joined(conditions, ", ") + " FROM " +
                                                            Quoted(table.table) + WhereKey(table, changes.size() + 1),
                                                        sql_);
    BindAll(statement, key, changes);
    if (!statement.Step(sql_)) {
        ThrowDeleted();
    }
    QStringList fields;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (sqlite3_column_int(statement.Handle(), static_cast<int>(i)) == 0) {
            fields.append(changes[i].column);
        }
    }
    throw EngineError(EngineErrorNumber::RecordChanged,
                      u"The record was not written because another user changed it meanwhile (%1). Read it again and "
                      "repeat the change."_s.arg(fields.join(u", "_s)),
                      sql_);
}

void RecordWriter::ThrowDeleted() const {
    throw EngineError(EngineErrorNumber::RecordDeleted, u"The record has been deleted by another user."_s, sql_);
}

void RecordWriter::Insert(const dialect::BaseTable& table, const std::vector<FieldChange>& fields,
                          const std::function<void(sqlite3_stmt*)>& onKey) {
    std::vector<QByteArray> columns;
    std::vector<QByteArray> places;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        columns.push_back(Quoted(fields[i].column));
        places.push_back(Place(i + 1));
    }
    const QByteArray values =
        fields.empty() ? " DEFAULT VALUES" : " (" + Joined(columns, ", ") + ") VALUES (" + Joined(places, ", ") + ')';
    Statement statement = session_.Statements().Acquire(
        "INSERT INTO " + Quoted(table.table) + values + " RETURNING " + Joined(KeyColumns(table), ", "), sql_);
    int place = 0;
    for (const FieldChange& field : fields) {
        statement.Bind(++place, field.after);
    }
    statement.Step(sql_);
    onKey(statement.Handle());
    statement.Step(sql_);
}

void RecordWriter::Delete(const dialect::BaseTable& table, const std::vector<Field>& key) {
    {
        Statement statement =
            session_.Statements().Acquire("DELETE FROM " + Quoted(table.table) + WhereKey(table, 1), sql_);
        BindAll(statement, key, {});
        statement.Step(sql_);
    }
    if (sqlite3_changes64(session_.Store().Handle()) != 1) {
        ThrowDeleted();
    }
}

} // namespace velmora::engine::sqlite
