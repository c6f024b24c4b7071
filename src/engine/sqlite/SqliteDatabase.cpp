#include "engine/sqlite/SqliteDatabase.h"

#include "engine/sqlite/Soundness.h"
#include "engine/sqlite/SqliteQueryDef.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::sqlite {

namespace {

Presence JoinChecked(const QString& path) {
    CheckPath(path);
    return Presence::Join(path);
}

} // namespace

SqliteDatabase::SqliteDatabase(const QString& path, const OpenOptions& options)
    : path_(path), session_(std::make_shared<Session>(JoinChecked(path), path, options)) {
    session_->Store().SetDamageHook([path] { LeaveDamageMark(path); });
    CheckOpened(session_->Store().Handle(), path_, options);
    session_->Store().SetWriting();
}

std::unique_ptr<Recordset> SqliteDatabase::OpenRecordset(QStringView source, RecordsetKind kind) {
    return session_->OnCurrentSchema([&] {
        auto storage = session_->TakeStorage();
        storage->input.Assign(source);
        return OpenOn(*session_, std::move(storage), kind, {});
    });
}

qint64 SqliteDatabase::Execute(QStringView sql) {
    return session_->OnCurrentSchema([&] {
        QueryInput input;
        input.Assign(sql);
        return RunAction(*session_, input, {});
    });
}

std::unique_ptr<QueryDef> SqliteDatabase::OpenQueryDef(QStringView name) {
    const auto find = [&] {
        const QString* text = session_->Catalog().FindQuery(name);
        if (text == nullptr) {
            throw EngineError(EngineErrorNumber::UnknownTable,
                              u"There is no stored query named \"%1\" in the database."_s.arg(name));
        }
        return *text;
    };
    return CreateQueryDef(session_->OnCurrentSchema(find));
}

std::unique_ptr<QueryDef> SqliteDatabase::CreateQueryDef(const QString& sql) {
    return std::make_unique<SqliteQueryDef>(*session_, sql);
}

void SqliteDatabase::Idle(IdleOption option) {
    switch (option) {
    case IdleOption::FreeLocks:
        session_->FreeLocks();
        break;
    case IdleOption::RefreshCache:
        session_->Refresh();
        break;
    }
}

} // namespace velmora::engine::sqlite
