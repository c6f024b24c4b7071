#pragma once

#include "engine/Database.h"
#include "engine/sqlite/Presence.h"
#include "engine/sqlite/Session.h"

namespace velmora::engine::sqlite {

class SqliteDatabase final : public Database {
public:
    SqliteDatabase(const QString& path, const OpenOptions& options);

    std::unique_ptr<Recordset> OpenRecordset(QStringView source, RecordsetKind kind) override;
    qint64 Execute(QStringView sql) override;
    QueryDef OpenQueryDef(QStringView name) override;
    QueryDef CreateQueryDef(const QString& sql) override;
    QStringList QueryNames() const override { return session_.Catalog().QueryNames(); }
    void Idle(IdleOption option) override;
    const dialect::Catalog& Schema() const override { return session_.Catalog(); }
    const QString& Path() const override { return path_; }

private:
    void BeginTransaction() override { session_.Begin(); }
    void CommitTransaction() override { session_.Commit(); }
    void RollbackTransaction() noexcept override { session_.Rollback(); }

    QString path_;
    Presence presence_; // goes last: the file counts as open until its connection is closed
    Session session_;
};

} // namespace velmora::engine::sqlite
