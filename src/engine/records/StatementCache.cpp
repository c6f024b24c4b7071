#include "engine/records/StatementCache.h"

namespace velmora::engine::records {

namespace {

// More sets than this open on one text at a time are rare; their statements are prepared anew.
constexpr std::size_t idleLimit = 4;

} // namespace

void StatementCache::HandBack::operator()(StoreStatement* statement) const noexcept {
    std::unique_ptr<StoreStatement> owned(statement);
    owned->Reset();
    if (idle->size() < idleLimit) {
        idle->push_back(std::move(owned));
    }
}

StatementCache::Lease StatementCache::Acquire(const QByteArray& sql, const QString& callerText) {
    auto* known = idle_.Find(sql);
    if (known == nullptr) {
        known = &idle_.Insert(sql, std::make_shared<Idle>());
        // Handing back must not fail.
        (*known)->reserve(idleLimit);
    }
    const std::shared_ptr<Idle> idle = *known;
    if (idle->empty()) {
        return Lease(connection_.Prepare(sql, callerText).release(), HandBack{idle});
    }
    Lease statement(idle->back().release(), HandBack{idle});
    idle->pop_back();
    return statement;
}

} // namespace velmora::engine::records
