#pragma once

#include "engine/records/LruCache.h"
#include "engine/records/StoreConnection.h"

#include <QByteArray>

namespace velmora::engine::records {

// Prepared statements by the store's text, so that none is prepared twice. Two users of a text at once get two
// statements, so that neither resets the other's.
class StatementCache {
    using Idle = std::vector<std::unique_ptr<StoreStatement>>;
    struct HandBack {
        std::shared_ptr<Idle> idle;
        void operator()(StoreStatement* statement) const noexcept;
    };

public:
    // A statement in use; goes back to the cache, reset, with its owner. Must not outlive the connection.
    using Lease = std::unique_ptr<StoreStatement, HandBack>;

    explicit StatementCache(StoreConnection& connection) : connection_(connection), idle_(bound) {}

    Lease Acquire(const QByteArray& sql, const QString& callerText);
    // Runs a text that returns nothing.
    void Run(const QByteArray& sql, const QString& callerText) { Acquire(sql, callerText)->Step(callerText); }
    void Clear() { idle_.Clear(); }

private:
    struct Hash {
        std::size_t operator()(const QByteArray& text) const { return qHash(text); }
    };
    static constexpr std::size_t bound = 512;

    StoreConnection& connection_;
    LruCache<QByteArray, std::shared_ptr<Idle>, Hash> idle_;
};

} // namespace velmora::engine::records
