#pragma once

#include "engine/records/StoreConnection.h"
#include "engine/sqlite/Connection.h"

#include <QByteArrayView>

#include <functional>

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

} // namespace velmora::engine::sqlite
