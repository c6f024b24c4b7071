#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

struct sqlite3;

namespace velmora::test {

// The database file as any other tool sees it: SQL of the store itself, without the record engine.
class RawStore {
public:
    explicit RawStore(const QString& path);
    ~RawStore();
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    // Runs a script.
    void Run(const QString& sql);
    // The rows of a query, fields joined with "|"; empty fields are nothing. `:s` and `:e` are bound to `from` and
    // `to`.
    QStringList Rows(const QString& sql, const QString& from = {}, const QString& to = {});
    qint64 Number(const QString& sql);

    // For the text that the dialect compiles to, with the positional values given: the steps of its plan, and the
    // instructions that the store needs to run it.
    QStringList Plan(const QByteArray& compiled);
    qint64 Work(const QByteArray& compiled, const QStringList& values);

private:
    sqlite3* handle_ = nullptr;
};

} // namespace velmora::test
