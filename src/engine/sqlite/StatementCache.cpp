#include "engine/sqlite/StatementCache.h"

namespace velmora::engine::sqlite {

Statement StatementCache::Acquire(const QByteArray& sql, const QString& callerSql) {
    auto* known = texts_.Find(sql);
    if (known == nullptr) {
        known = &texts_.Insert(sql, std::make_shared<PreparedText>(connection_, sql));
    }
    return (*known)->Acquire(callerSql);
}

void StatementCache::Run(const QByteArray& sql, const QString& callerSql) {
    Acquire(sql, callerSql).Step(callerSql);
}

} // namespace velmora::engine::sqlite
