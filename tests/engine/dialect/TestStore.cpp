#include "tests/engine/dialect/TestStore.h"

#include "engine/EngineError.h"
#include "engine/sqlite/Functions.h"
#include "tests/support/Folders.h"

#include <QFile>

#include <algorithm>
#include <stdexcept>

namespace velmora::engine::dialect {

namespace {

QString ReadFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

QString CorpusFolder() {
    return TestDataFolder() + QStringLiteral("/engine/dialect/corpus/");
}

FieldType TypeOfDeclaration(const QString& declared) {
    if (declared == u"BOOLEAN") {
        return FieldType::YesNo;
    }
    if (declared == u"DATETIME") {
        return FieldType::DateTime;
    }
    if (declared == u"REAL") {
        return FieldType::Real;
    }
    return declared == u"TEXT" ? FieldType::Text : FieldType::Integer;
}

void BindValue(sqlite3_stmt* statement, int place, const Value& value, FieldType type) {
    if (value.IsNull()) {
        sqlite3_bind_null(statement, place);
    } else if (value.IsBool() || type == FieldType::YesNo) {
        sqlite3_bind_int(statement, place, value.ToBool() ? 1 : 0);
    } else if (value.IsInteger()) {
        sqlite3_bind_int64(statement, place, value.ToInteger());
    } else if (value.IsReal()) {
        sqlite3_bind_double(statement, place, value.ToReal());
    } else {
        const QByteArray text = value.ToText().toUtf8();
        sqlite3_bind_text(statement, place, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
}

QString Shown(sqlite3_stmt* statement, int column, FieldType type) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return QStringLiteral("NULL");
    case SQLITE_FLOAT:
        return NumberText(sqlite3_column_double(statement, column));
    case SQLITE_INTEGER:
        if (type == FieldType::YesNo) {
            return sqlite3_column_int64(statement, column) != 0 ? QStringLiteral("True") : QStringLiteral("False");
        }
        break;
    default:
        break;
    }
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
}

} // namespace

TestStore::TestStore() {
    sqlite3* connection = nullptr;
    sqlite3_open(":memory:", &connection);
    connection_.reset(connection);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite::RegisterFunctions(connection, [] { return *ParseStorageText(u"2026-03-07 14:15:00"); });
    Execute(ReadFile(TestDataFolder() + QStringLiteral("/data/first-schema.sql")));
    Execute(ReadFile(CorpusFolder() + QStringLiteral("rows.sql")));
    ReadSchema();
}

QStringList TestStore::TextFile(const QString& name) {
    return ReadFile(CorpusFolder() + name).split(u'\n');
}

void TestStore::Execute(const QString& script) {
    char* message = nullptr;
    if (sqlite3_exec(connection_.get(), script.toUtf8().constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        const std::string words = message;
        sqlite3_free(message);
        throw std::runtime_error(words);
    }
}

void TestStore::ReadSchema() {
    const Prepared columns =
        PrepareText("SELECT m.name, c.name, c.type, c.pk FROM sqlite_schema m, pragma_table_info(m.name) c "
                    "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite%' ORDER BY 1, c.cid");
    const auto text = [&](int column) {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(columns.get(), column)));
    };
    std::map<QString, std::map<int, int>> keys;
    while (sqlite3_step(columns.get()) == SQLITE_ROW) {
        CatalogTable& table = tables_[text(0).toLower()];
        table.name = text(0);
        if (const int key = sqlite3_column_int(columns.get(), 3)) {
            keys[table.name.toLower()][key] = static_cast<int>(table.columns.size());
            table.keyIsRowNumber = text(2) == u"INTEGER";
        }
        table.columns.push_back({text(1), TypeOfDeclaration(text(2))});
    }
    for (const auto& [name, key] : keys) {
        for (const auto& [position, column] : key) {
            tables_[name].key.push_back(column);
        }
    }
}

const CatalogTable* TestStore::FindTable(QStringView name) const {
    const auto found = tables_.find(name.toString().toLower());
    return found == tables_.end() ? nullptr : &found->second;
}

const QString* TestStore::FindQuery(QStringView name) const {
    const auto found = queries_.find(name.toString().toLower());
    return found == queries_.end() ? nullptr : &found->second;
}

TestStore::Prepared TestStore::PrepareText(const QByteArray& sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection_.get(), sql.constData(), static_cast<int>(sql.size()), &statement, nullptr) !=
        SQLITE_OK) {
        throw std::runtime_error(std::string(sqlite3_errmsg(connection_.get())) + " in " + sql.toStdString());
    }
    return Prepared(statement);
}

void TestStore::Prepare(const QByteArray& sql) {
    PrepareText(sql);
}

QString TestStore::Plan(const QByteArray& sql) {
    const Prepared plan = PrepareText("EXPLAIN QUERY PLAN " + sql);
    QStringList lines;
    while (sqlite3_step(plan.get()) == SQLITE_ROW) {
        lines += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(plan.get(), 3)));
    }
    return lines.join(u'\n');
}

TestStore::Result TestStore::Run(const QString& text, const std::map<QString, Value>& parameters,
                                 const std::vector<Value>* literals) {
    const CompiledStatement compiled = Compile(text, *this, Purpose::Read);
    TextShape shape;
    ScanShape(text, shape);
    return Run(compiled, compiled.sql, compiled.bindings, literals ? *literals : shape.literals, parameters);
}

TestStore::Result TestStore::Run(const CompiledStatement& compiled, const QByteArray& sql,
                                 const std::vector<Binding>& bindings, const std::vector<Value>& literals,
                                 const std::map<QString, Value>& parameters, const std::vector<Value>& more) {
    const Prepared statement = PrepareText(sql);
    int place = 0;
    for (const Binding& binding : bindings) {
        Value value = binding.constant;
        if (binding.source == Binding::Source::Literal) {
            value = literals.at(static_cast<size_t>(binding.index));
        } else if (binding.source == Binding::Source::Parameter) {
            const QString& name = compiled.parameters.at(static_cast<size_t>(binding.index)).name;
            const auto given = parameters.find(name);
            if (given == parameters.end()) {
                throw EngineError(EngineErrorNumber::MissingParameter, name);
            }
            value = given->second;
        }
        BindValue(statement.get(), ++place, value, binding.type);
    }
    for (const Value& value : more) {
        BindValue(statement.get(), ++place, value, FieldType::Unknown);
    }
    Result result;
    for (const ResultColumn& column : compiled.columns) {
        result.header += column.name;
    }
    const int visible = static_cast<int>(compiled.columns.size());
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement.get())) == SQLITE_ROW) {
        QStringList fields;
        for (int i = 0; i < visible + compiled.hiddenColumns; ++i) {
            const FieldType type = i < visible ? compiled.columns[static_cast<size_t>(i)].type : FieldType::Unknown;
            fields += Shown(statement.get(), i, type);
        }
        result.rows += fields.join(u'|');
    }
    if (code != SQLITE_DONE) {
        throw EngineError(code == SQLITE_MISMATCH ? EngineErrorNumber::TypeMismatch : EngineErrorNumber::Failed,
                          QString::fromUtf8(sqlite3_errmsg(connection_.get())));
    }
    result.changes = sqlite3_changes64(connection_.get());
    return result;
}

} // namespace velmora::engine::dialect
