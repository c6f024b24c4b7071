#include "engine/sqlite/Connection.h"

#include "engine/sqlite/StoreError.h"

namespace velmora::engine::sqlite {

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

Connection::Connection(const QByteArray& path, int flags) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.constData(), &handle, flags | SQLITE_OPEN_EXRESCODE, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) {
        ThrowStoreError(handle, code, {});
    }
}

void Connection::Close() {
    sqlite3* const handle = handle_.release();
    const int code = sqlite3_close(handle);
    if (code != SQLITE_OK) {
        handle_.reset(handle);
        ThrowStoreError(handle, code, {});
    }
}

} // namespace velmora::engine::sqlite
