#pragma once

#include "engine/sqlite/LruCache.h"
#include "engine/sqlite/Statement.h"

#include <QByteArray>

namespace velmora::engine::sqlite {

// The prepared statements of the engine's own texts (transactions, changes of single records), by text.
class StatementCache {
public:
    explicit StatementCache(const Connection& connection) : connection_(connection), texts_(bound) {}

    // `callerSql` is the text in the dialect that the statement serves, for the error.
    Statement Acquire(const QByteArray& sql, const QString& callerSql = {});
    // Runs a text that returns nothing.
    void Run(const QByteArray& sql, const QString& callerSql = {});
    void Clear() { texts_.Clear(); }

private:
    struct Hash {
        std::size_t operator()(const QByteArray& text) const { return qHash(text); }
    };
    static constexpr std::size_t bound = 128;

    const Connection& connection_;
    LruCache<QByteArray, std::shared_ptr<PreparedText>, Hash> texts_;
};

} // namespace velmora::engine::sqlite
