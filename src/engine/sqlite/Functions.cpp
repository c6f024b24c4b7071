#include "engine/sqlite/Functions.h"

#include "engine/EngineError.h"
#include "engine/sqlite/FunctionSupport.h"

#include <memory>

namespace velmora::engine::sqlite {

namespace {

void Check(sqlite3* connection, int code) {
    if (code != SQLITE_OK) {
        throw EngineError(EngineErrorNumber::Failed, QString::fromUtf8(sqlite3_errmsg(connection)));
    }
}

DateTime CurrentMoment(sqlite3_context* context) {
    return (*static_cast<NowSource*>(sqlite3_user_data(context)))();
}

void Now(sqlite3_context* context, int, sqlite3_value**) noexcept {
    try {
        Return(context, CurrentMoment(context));
    } catch (...) {
        ReturnFailure(context);
    }
}

void Today(sqlite3_context* context, int, sqlite3_value**) noexcept {
    try {
        Return(context, StartOfDay(DateOf(CurrentMoment(context))));
    } catch (...) {
        ReturnFailure(context);
    }
}

void RegisterClock(sqlite3* connection, const char* name, void (*call)(sqlite3_context*, int, sqlite3_value**),
                   const NowSource& now) {
    // The store destroys its copy also when it refuses the function.
    auto kept = std::make_unique<NowSource>(now);
    Check(connection,
          sqlite3_create_function_v2(connection, name, 0, SQLITE_UTF8, kept.release(), call, nullptr, nullptr,
                                     [](void* source) { delete static_cast<NowSource*>(source); }));
}

} // namespace

void RegisterFunctions(sqlite3* connection, NowSource now) {
    RegisterClock(connection, "dialect_now", Now, now);
    RegisterClock(connection, "dialect_date", Today, now);
    for (const auto& list : {TextFunctions(), NumberFunctions(), DateFunctions()}) {
        for (const ScalarFunction& function : list) {
            Check(connection, sqlite3_create_function_v2(connection, function.name, function.arguments,
                                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                                         function.call, nullptr, nullptr, nullptr));
        }
    }
    RegisterOrderedAggregates(connection);
}

} // namespace velmora::engine::sqlite
