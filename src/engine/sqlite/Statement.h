#pragma once

#include "engine/Recordset.h"
#include "engine/sqlite/Connection.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

struct sqlite3_stmt;

namespace velmora::engine::sqlite {

class PreparedText;

// One use of a prepared statement, by one holder; handed back reset when the holder goes.
class Statement {
public:
    Statement() = default;
    Statement(std::shared_ptr<PreparedText> text, sqlite3_stmt* handle) : text_(std::move(text)), handle_(handle) {}
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    explicit operator bool() const { return handle_ != nullptr; }
    sqlite3_stmt* Handle() const { return handle_; }

    // True on a row, false behind the last. `sql` is the caller's text for the error.
    bool Step(const QString& sql);
    // Back to the beginning; gives up the locks that reading took.
    void Reset();

    // Places count from 1. Texts are not copied: they must stay until the statement is reset.
    void BindNull(int place);
    void BindInteger(int place, qint64 number);
    void BindReal(int place, double number);
    void BindText(int place, const char* utf8, qsizetype size);
    void Bind(int place, const Field& field);

private:
    void HandBack();
    void CheckBound(int code);

    std::shared_ptr<PreparedText> text_;
    sqlite3_stmt* handle_ = nullptr;
};

// One text of the store with its idle prepared statements. Two holders at once get two statements, so that none resets
// the other's. Must not outlive the connection.
class PreparedText : public std::enable_shared_from_this<PreparedText> {
public:
    PreparedText(const Connection& connection, QByteArray sql) : connection_(connection), sql_(std::move(sql)) {}
    ~PreparedText();
    PreparedText(const PreparedText&) = delete;
    PreparedText& operator=(const PreparedText&) = delete;

    const Connection& Owner() const { return connection_; }
    const QByteArray& Sql() const { return sql_; }
    // `sql` is the caller's text for the error.
    Statement Acquire(const QString& sql);

private:
    friend class Statement;
    void TakeBack(sqlite3_stmt* handle) noexcept;

    const Connection& connection_;
    QByteArray sql_;
    std::vector<sqlite3_stmt*> idle_;
};

} // namespace velmora::engine::sqlite
