#include "engine/records/SessionDatabase.h"

#include "engine/records/SessionQuery.h"

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::records {

std::unique_ptr<Recordset> SessionDatabase::OpenRecordset(QStringView source, RecordsetKind kind) {
    return OpenRecords(*session_, source, kind, {});
}

qint64 SessionDatabase::Execute(QStringView sql) {
    return RunAction(*session_, sql, {});
}

std::unique_ptr<QueryDef> SessionDatabase::OpenQueryDef(QStringView name) {
    return CreateQueryDef(session_->OnCurrentSchema([&] {
        const QString* text = session_->Catalog().FindQuery(name);
        if (text == nullptr) {
            throw EngineError(EngineErrorNumber::UnknownTable,
                              u"There is no stored query named \"%1\" in the database."_s.arg(name));
        }
        return *text;
    }));
}

std::unique_ptr<QueryDef> SessionDatabase::CreateQueryDef(const QString& sql) {
    return std::make_unique<SessionQuery>(*session_, sql);
}

void SessionDatabase::AddTable(const TableDefinition& table) {
    session_->Connection().AddTable(table);
    session_->Refresh();
}

void SessionDatabase::Idle(IdleOption option) {
    switch (option) {
    case IdleOption::FreeLocks:
        session_->FreeLocks();
        break;
    case IdleOption::RefreshCache:
        session_->Refresh();
        break;
    }
}

} // namespace velmora::engine::records
