#include "tests/data/RawStore.h"

#include "engine/sqlite/Functions.h"

#include <sqlite3.h>

#include <stdexcept>

namespace velmora::test {

namespace {

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

Statement Prepare(sqlite3* handle, const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, sql.constData(), static_cast<int>(sql.size()), &statement, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string(sqlite3_errmsg(handle)) + ": " + sql.toStdString());
    }
    return Statement(statement);
}

void BindText(sqlite3_stmt* statement, int index, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    if (index > 0 && !text.isNull()) {
        sqlite3_bind_text(statement, index, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }
}

} // namespace

RawStore::RawStore(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &handle_) != SQLITE_OK) {
        throw std::runtime_error("cannot open " + path.toStdString());
    }
    engine::sqlite::RegisterFunctions(handle_, [] { return DateTime{}; });
}

RawStore::~RawStore() {
    sqlite3_close(handle_);
}

void RawStore::Run(const QString& sql) {
    if (sqlite3_exec(handle_, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(handle_));
    }
}

QStringList RawStore::Rows(const QString& sql, const QString& from, const QString& to) {
    const Statement statement = Prepare(handle_, sql.toUtf8());
    BindText(statement.get(), sqlite3_bind_parameter_index(statement.get(), ":s"), from);
    BindText(statement.get(), sqlite3_bind_parameter_index(statement.get(), ":e"), to);
    QStringList rows;
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        QStringList fields;
        for (int n = 0; n < sqlite3_column_count(statement.get()); ++n) {
            const unsigned char* text = sqlite3_column_text(statement.get(), n);
            fields.append(QString::fromUtf8(reinterpret_cast<const char*>(text)));
        }
        rows.append(fields.join(u'|'));
    }
    return rows;
}

qint64 RawStore::Number(const QString& sql) {
    return Rows(sql).value(0).toLongLong();
}

QStringList RawStore::Plan(const QByteArray& compiled) {
    const Statement statement = Prepare(handle_, "EXPLAIN QUERY PLAN " + compiled);
    QStringList steps;
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        steps.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 3))));
    }
    return steps;
}

qint64 RawStore::Work(const QByteArray& compiled, const QStringList& values) {
    const Statement statement = Prepare(handle_, compiled);
    for (int n = 0; n < values.size(); ++n) {
        BindText(statement.get(), n + 1, values[n]);
    }
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    }
    return sqlite3_stmt_status(statement.get(), SQLITE_STMTSTATUS_VM_STEP, 0);
}

} // namespace velmora::test
