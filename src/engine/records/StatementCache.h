#pragma once

#include "engine/records/StoreConnection.h"

#include <QByteArray>
#include <QCache>

#include <memory>
#include <vector>

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
    void Clear() { idle_.clear(); }

private:
    static constexpr int bound = 512;

    StoreConnection& connection_;
    QCache<QByteArray, std::shared_ptr<Idle>> idle_;
};

} // namespace velmora::engine::records
