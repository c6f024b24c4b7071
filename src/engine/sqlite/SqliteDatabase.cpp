#include "engine/sqlite/SqliteDatabase.h"

#include "engine/sqlite/SqliteQueryDef.h"

#include <sqlite3.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine {

std::unique_ptr<Database> Database::Open(const QString& path, const OpenOptions& options) {
    return std::make_unique<sqlite::SqliteDatabase>(path, options);
}

namespace sqlite {

namespace {

// The name that a text consists of, without its brackets; empty for a statement.
QStringView BareName(QStringView text) {
    text = text.trimmed();
    if (text.startsWith(u'[') && text.endsWith(u']') && text.size() > 2) {
        const QStringView inner = text.mid(1, text.size() - 2);
        return inner.contains(u']') ? QStringView() : inner;
    }
    const bool hasBlank = std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isSpace(); });
    return hasBlank ? QStringView() : text;
}

} // namespace

SqliteDatabase::SqliteDatabase(const QString& path, const OpenOptions& options)
    : path_(path), session_(path, options) {}

std::unique_ptr<Recordset> SqliteDatabase::OpenRecordset(QStringView source, RecordsetKind kind) {
    return session_.OnCurrentSchema([&] {
        auto storage = session_.TakeStorage();
        storage->input.Assign(source);
        return OpenOn(session_, std::move(storage), kind, {});
    });
}

qint64 SqliteDatabase::Execute(QStringView sql) {
    return session_.OnCurrentSchema([&] {
        QueryInput input;
        const QStringView name = BareName(sql);
        const QString* stored = name.isEmpty() ? nullptr : session_.Catalog().FindQuery(name);
        input.Assign(stored == nullptr ? sql : QStringView(*stored));
        return RunAction(session_, input, {});
    });
}

QueryDef SqliteDatabase::OpenQueryDef(QStringView name) {
    const auto find = [&] {
        const QString* text = session_.Catalog().FindQuery(name);
        if (text == nullptr) {
            throw EngineError(EngineErrorNumber::UnknownTable,
                              u"There is no stored query named \"%1\" in the database."_s.arg(name));
        }
        return *text;
    };
    return CreateQueryDef(session_.OnCurrentSchema(find));
}

QueryDef SqliteDatabase::CreateQueryDef(const QString& sql) {
    return QueryDef(std::make_unique<SqliteQueryDef>(session_, sql));
}

void SqliteDatabase::Idle(IdleOption option) {
    switch (option) {
    case IdleOption::FreeLocks:
        session_.FreeLocks();
        break;
    case IdleOption::RefreshCache:
        session_.Refresh();
        break;
    }
}

} // namespace sqlite

} // namespace velmora::engine
