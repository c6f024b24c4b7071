#include "data/StoreAgainstOthers.h"

#include "engine/EngineError.h"

namespace velmora {

namespace {

constexpr int attempts = 5;

} // namespace

bool StoreAgainstOthers(const std::function<engine::Recordset*()>& find,
                        const std::function<void(engine::Recordset&)>& assign) {
    for (int attempt = 1;; ++attempt) {
        engine::Recordset* set = find();
        if (set == nullptr) {
            return false;
        }
        try {
            set->Edit();
            assign(*set);
            set->Update();
            return true;
        } catch (const engine::EngineError& error) {
            set->CancelUpdate();
            const bool otherDesk = error.Kind() == engine::EngineErrorNumber::RecordChanged ||
                                   error.Kind() == engine::EngineErrorNumber::RecordDeleted;
            if (!otherDesk || attempt == attempts) {
                throw;
            }
        }
    }
}

} // namespace velmora
