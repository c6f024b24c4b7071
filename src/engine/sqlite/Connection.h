#pragma once

#include <QByteArray>

#include <sqlite3.h>

#include <memory>

namespace velmora::engine::sqlite {

// Runs statements that give no rows, separated by semicolons. Throws as ThrowStoreError.
void Execute(sqlite3* connection, const QByteArray& sql);

// A name as it is written in the store's SQL: in double quotes, the quotes inside doubled.
QByteArray Quoted(const QByteArray& name);

// An open connection. Result codes are extended ones.
class Connection {
public:
    // `flags` are those of sqlite3_open_v2. Throws as ThrowStoreError.
    Connection(const QByteArray& path, int flags);
    // Empty, in memory.
    static Connection InMemory() { return Connection(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE); }

    sqlite3* Handle() const { return handle_.get(); }
    void Execute(const QByteArray& sql) const { sqlite::Execute(handle_.get(), sql); }
    // Throws when the store fails to write what is left to write.
    void Close();

private:
    struct CloseLater {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, CloseLater> handle_;
};

} // namespace velmora::engine::sqlite
