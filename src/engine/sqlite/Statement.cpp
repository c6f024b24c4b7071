#include "engine/sqlite/Statement.h"

#include "engine/sqlite/StoreError.h"

namespace velmora::engine::sqlite {

Statement::Statement(sqlite3* connection, const QByteArray& sql) : connection_(connection) {
    Prepare(sql, QString::fromUtf8(sql));
}

Statement::Statement(sqlite3* connection, const QByteArray& sql, const QString& callerText, const DamageHook& onDamage)
    : connection_(connection), onDamage_(&onDamage) {
    Prepare(sql, callerText);
}

void Statement::Prepare(const QByteArray& sql, const QString& text) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(connection_, sql.constData(), static_cast<int>(sql.size() + 1),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    statement_.reset(statement);
    Check(code, text);
}

void Statement::Check(int code, const QString& text) const {
    if (code == SQLITE_OK) {
        return;
    }
    if (onDamage_ != nullptr && *onDamage_ && IsDamage(code)) {
        (*onDamage_)();
    }
    ThrowStoreError(connection_, code, text);
}

bool Statement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Check(code, QString::fromUtf8(sqlite3_sql(statement_.get())));
    }
    return code == SQLITE_ROW;
}

bool Statement::Step(const QString& callerText) {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        Check(code, callerText);
    }
    return code == SQLITE_ROW;
}

void Statement::Bind(int number, const Field& value) {
    int code = SQLITE_OK;
    switch (value.StoredKind()) {
    case Field::Kind::Null:
        code = sqlite3_bind_null(statement_.get(), number);
        break;
    case Field::Kind::Integer:
        code = sqlite3_bind_int64(statement_.get(), number, value.StoredInteger());
        break;
    case Field::Kind::Real:
        code = sqlite3_bind_double(statement_.get(), number, value.ToReal());
        break;
    case Field::Kind::Text:
        const std::string_view text = value.Utf8();
        code = sqlite3_bind_text64(statement_.get(), number, text.empty() ? "" : text.data(), text.size(),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    Check(code, {});
}

namespace {

Field FieldOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return Field(FieldType::Unknown, qint64{sqlite3_value_int64(value)});
    case SQLITE_FLOAT:
        return Field(FieldType::Unknown, sqlite3_value_double(value));
    default:
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return Field(FieldType::Unknown, text == nullptr ? "" : text, sqlite3_value_bytes(value));
    }
}

void Append(records::RowArena& rows, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return rows.AddNull();
    case SQLITE_INTEGER:
        return rows.AddInteger(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return rows.AddReal(sqlite3_value_double(value));
    default:
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        rows.AddText(text == nullptr ? "" : text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
}

} // namespace

// A connection without a mutex lets a value be asked for what it is; asking the statement for each property costs three
// times as much, and a wide row is mostly this.
void Statement::ReadRow(std::span<Field> row) const {
    int column = 0;
    for (Field& field : row) {
        field = FieldOf(sqlite3_column_value(statement_.get(), column++));
    }
}

void Statement::AppendRow(records::RowArena& rows, int fields) const {
    rows.BeginRow(fields);
    for (int column = 0; column < fields; ++column) {
        Append(rows, sqlite3_column_value(statement_.get(), column));
    }
}

QByteArrayView Statement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return {text == nullptr ? "" : text, sqlite3_column_bytes(statement_.get(), column)};
}

} // namespace velmora::engine::sqlite
