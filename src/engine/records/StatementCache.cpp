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
    const auto* known = idle_.object(sql);
    const auto idle = known != nullptr ? *known : std::make_shared<Idle>();
    if (known == nullptr) {
        // Handing back must not fail.
        idle->reserve(idleLimit);
        idle_.insert(sql, new std::shared_ptr<Idle>(idle));
    }
    if (idle->empty()) {
        return Lease(connection_.Prepare(sql, callerText).release(), HandBack{idle});
    }
    Lease statement(idle->back().release(), HandBack{idle});
    idle->pop_back();
    return statement;
}

} // namespace velmora::engine::records
