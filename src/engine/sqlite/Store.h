#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <sqlite3.h>

#include <memory>

namespace velmora::engine::sqlite {

// A prepared statement for the engine's own housekeeping, in the store's SQL. Failures are EngineErrors. Must not
// outlive its connection.
class StoreStatement {
public:
    // `sql` holds one statement.
    StoreStatement(sqlite3* connection, const QByteArray& sql);

    // Runs to the next row; false when there is none.
    bool Step();
    // Makes the statement ready to run again; bound values stay.
    void Reset() { sqlite3_reset(statement_.get()); }
    // Numbers of parameters count from 1. The text is copied.
    void BindText(int number, const QByteArray& utf8);
    void BindInteger(int number, qint64 value);

    // Fields of the row that Step found, counted from 0. A text is good until the next Step or Reset.
    qint64 Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
    QByteArrayView Text(int column) const;
    QByteArray TextCopy(int column) const { return Text(column).toByteArray(); }
    bool IsNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }

    sqlite3_stmt* Handle() const { return statement_.get(); }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    sqlite3* connection_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

// Runs statements that give no rows, separated by semicolons.
void Execute(sqlite3* connection, const QByteArray& sql);

// A name as it is written in the store's SQL: in double quotes, the quotes inside doubled.
QByteArray Quoted(const QByteArray& name);

// A connection for the engine's own housekeeping.
class Store {
public:
    // `flags` are those of sqlite3_open_v2. Throws as ThrowStoreError.
    Store(const QByteArray& path, int flags);
    // Empty, in memory.
    static Store InMemory() { return Store(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE); }

    sqlite3* Handle() const { return connection_.get(); }
    void Execute(const QByteArray& sql) const { sqlite::Execute(connection_.get(), sql); }
    // Throws when the store fails to write what is left to write.
    void Close();

private:
    struct Closer {
        void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
    };
    std::unique_ptr<sqlite3, Closer> connection_;
};

} // namespace velmora::engine::sqlite
