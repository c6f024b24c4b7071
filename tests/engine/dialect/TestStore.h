#pragma once

#include "base/DateTime.h"
#include "base/Value.h"
#include "engine/dialect/Compiler.h"

#include <QHash>
#include <QStringList>

#include <sqlite3.h>

#include <map>
#include <memory>
#include <vector>

namespace velmora::engine::dialect {

// A small store in memory with the program's schema, the rows of corpus/rows.sql and a clock that stands still.
class TestStore : public Catalog {
public:
    TestStore();

    const CatalogTable* FindTable(QStringView name) const override;
    const QString* FindQuery(QStringView name) const override;

    void AddQuery(const QString& name, const QString& text) { queries_[name.toLower()] = text; }
    static QStringList TextFile(const QString& name);

    struct Result {
        QStringList header;
        QStringList rows; // fields separated by "|"
        qint64 changes = 0;
    };
    // Compiles and runs a text. `literals` are those of another text of the same shape; null: its own.
    Result Run(const QString& text, const std::map<QString, Value>& parameters = {},
               const std::vector<Value>* literals = nullptr);
    // Runs a compiled statement; `sql` and `bindings` are its own or those of the reread.
    Result Run(const CompiledStatement& compiled, const QByteArray& sql, const std::vector<Binding>& bindings,
               const std::vector<Value>& literals, const std::map<QString, Value>& parameters,
               const std::vector<Value>& more = {});
    // Throws std::runtime_error with the store's words when it does not take the text.
    void Prepare(const QByteArray& sql);
    QString Plan(const QByteArray& sql);

    sqlite3* Connection() const { return connection_.get(); }

private:
    struct Close {
        void operator()(sqlite3* connection) const { sqlite3_close(connection); }
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Prepared = std::unique_ptr<sqlite3_stmt, Finalize>;

    Prepared PrepareText(const QByteArray& sql) const;
    void Execute(const QString& script);
    void ReadSchema();

    std::unique_ptr<sqlite3, Close> connection_;
    std::map<QString, CatalogTable> tables_;
    std::map<QString, QString> queries_;
};

} // namespace velmora::engine::dialect
