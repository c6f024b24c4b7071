#pragma once

#include "engine/EngineError.h"
#include "engine/records/StoreConnection.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <sqlite3.h>

#include <functional>
#include <memory>

namespace velmora::engine::sqlite {

// A prepared statement. Must not outlive its connection.
class Statement final : public records::StoreStatement {
public:
    using DamageHook = std::function<void()>;

    // For the engine's own housekeeping: errors name `sql`, which holds one statement.
    Statement(sqlite3* connection, const QByteArray& sql);
    // For a text of a caller's, which errors name; `onDamage` is called before an error that says that the file is
    // damaged, and must outlive the statement.
    Statement(sqlite3* connection, const QByteArray& sql, const QString& callerText, const DamageHook& onDamage);

    // Numbers of parameters count from 1. Values are copied.
    void Bind(int number, const Field& value) override;
    void BindText(int number, const QByteArray& utf8) {
        Bind(number, Field(FieldType::Unknown, utf8.constData(), utf8.size()));
    }
    void BindInteger(int number, qint64 value) { Bind(number, Field(FieldType::Unknown, value)); }

    // Runs to the next row; false when there is none.
    bool Step();
    bool Step(const QString& callerText) override;
    void ReadRow(std::span<Field> row) const override;
    void AppendRow(records::RowArena& rows, int fields) const override;
    void Reset() noexcept override { sqlite3_reset(statement_.get()); }

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

    void Prepare(const QByteArray& sql, const QString& text);
    void Check(int code, const QString& text) const;

    sqlite3* connection_;
    const DamageHook* onDamage_ = nullptr;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

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
    void Execute(const QByteArray& sql) { sqlite::Execute(handle_.get(), sql); }
    // Throws when the store fails to write what is left to write.
    void Close();

private:
    struct CloseLater {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, CloseLater> handle_;
};

// Throws the EngineError that stands for `code` (a result code of the store, extended or not), with a sentence for the
// user, `sql` as the text at fault (in the caller's dialect, empty when there was none), and the store's own words
// where they say more. `connection` is where those words are read from; null when there is no connection.
// Throws std::bad_alloc when the store ran out of memory.
[[noreturn]] void ThrowStoreError(sqlite3* connection, int code, const QString& sql);

// True for the codes by which the store says that the file is not a sound database.
bool IsDamage(int code);
// True for the codes that mean another user's lock was in the way for longer than the store waited.
bool IsLocked(int code);

} // namespace velmora::engine::sqlite
