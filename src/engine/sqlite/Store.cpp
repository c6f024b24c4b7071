#include "engine/sqlite/Store.h"

#include "engine/sqlite/StoreError.h"

namespace velmora::engine::sqlite {

StoreStatement::StoreStatement(sqlite3* connection, const QByteArray& sql) : connection_(connection) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(connection, sql.constData(), static_cast<int>(sql.size()), &statement, nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK) {
        ThrowStoreError(connection, sqlite3_extended_errcode(connection), QString::fromUtf8(sql));
    }
}

bool StoreStatement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        ThrowStoreError(connection_, sqlite3_extended_errcode(connection_),
                        QString::fromUtf8(sqlite3_sql(statement_.get())));
    }
    return false;
}

void StoreStatement::BindText(int number, const QByteArray& utf8) {
    sqlite3_bind_text(statement_.get(), number, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

void StoreStatement::BindInteger(int number, qint64 value) {
    sqlite3_bind_int64(statement_.get(), number, value);
}

QByteArrayView StoreStatement::Text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return {text, sqlite3_column_bytes(statement_.get(), column)};
}

void Execute(sqlite3* connection, const QByteArray& sql) {
    if (sqlite3_exec(connection, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        ThrowStoreError(connection, sqlite3_extended_errcode(connection), QString::fromUtf8(sql));
    }
}

QByteArray Quoted(const QByteArray& name) {
    QByteArray inner = name;
    inner.replace("\"", "\"\"");
    return '"' + inner + '"';
}

Store::Store(const QByteArray& path, int flags) {
    sqlite3* connection = nullptr;
    const int code = sqlite3_open_v2(path.constData(), &connection, flags, nullptr);
    connection_.reset(connection);
    if (code != SQLITE_OK) {
        ThrowStoreError(connection, connection == nullptr ? code : sqlite3_extended_errcode(connection), {});
    }
    sqlite3_extended_result_codes(connection, 1);
}

void Store::Close() {
    sqlite3* const connection = connection_.release();
    const int code = sqlite3_close(connection);
    if (code != SQLITE_OK) {
        connection_.reset(connection);
        ThrowStoreError(connection, code, {});
    }
}

} // namespace velmora::engine::sqlite
