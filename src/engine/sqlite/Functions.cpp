#include "engine/sqlite/Functions.h"

#include "engine/EngineError.h"

#include <memory>
#include <vector>

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

struct FreeValue {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
};
using KeptValue = std::unique_ptr<sqlite3_value, FreeValue>;

KeptValue Keep(sqlite3_value* value) {
    KeptValue kept(sqlite3_value_dup(value));
    if (!kept) {
        throw std::bad_alloc();
    }
    return kept;
}

// The value of the row whose key comes first or last.
struct Chosen {
    KeptValue value;
    std::vector<KeptValue> key;
};

// What the store keeps for a group; it starts out as zeros.
struct Group {
    Chosen* chosen;
};

enum class End { First, Last };

int Rank(int kind) {
    return kind == SQLITE_NULL ? 0 : kind == SQLITE_TEXT ? 2 : kind == SQLITE_BLOB ? 3 : 1;
}

// Orders two parts of keys as the store orders them: empty, numbers, texts without regard to case.
int Compare(sqlite3_value* first, sqlite3_value* second) {
    const int rank = Rank(sqlite3_value_type(first));
    if (const int difference = rank - Rank(sqlite3_value_type(second)); difference != 0 || rank == 0) {
        return difference;
    }
    if (rank == 1) {
        if (sqlite3_value_type(first) == SQLITE_INTEGER && sqlite3_value_type(second) == SQLITE_INTEGER) {
            const qint64 a = sqlite3_value_int64(first);
            const qint64 b = sqlite3_value_int64(second);
            return a < b ? -1 : a > b ? 1 : 0;
        }
        const double a = sqlite3_value_double(first);
        const double b = sqlite3_value_double(second);
        return a < b ? -1 : a > b ? 1 : 0;
    }
    const auto* a = reinterpret_cast<const char*>(sqlite3_value_text(first));
    const auto* b = reinterpret_cast<const char*>(sqlite3_value_text(second));
    if (!a || !b) {
        throw std::bad_alloc();
    }
    return sqlite3_stricmp(a, b);
}

template <End end>
bool Supersedes(const Chosen& chosen, const Arguments& arguments) {
    for (int i = 1; i < arguments.Count(); ++i) {
        const int order = Compare(arguments[i], chosen.key[static_cast<size_t>(i - 1)].get());
        if (order != 0) {
            return end == End::First ? order < 0 : order > 0;
        }
    }
    return end == End::Last;
}

template <End end>
void Step(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
    try {
        auto* group = static_cast<Group*>(sqlite3_aggregate_context(context, sizeof(Group)));
        if (!group) {
            throw std::bad_alloc();
        }
        const Arguments arguments(count, values);
        if (group->chosen && !Supersedes<end>(*group->chosen, arguments)) {
            return;
        }
        auto chosen = std::make_unique<Chosen>();
        chosen->value = Keep(arguments[0]);
        for (int i = 1; i < count; ++i) {
            chosen->key.push_back(Keep(arguments[i]));
        }
        delete std::exchange(group->chosen, chosen.release());
    } catch (...) {
        ReturnFailure(context);
    }
}

void Finish(sqlite3_context* context) noexcept {
    auto* group = static_cast<Group*>(sqlite3_aggregate_context(context, 0));
    if (!group || !group->chosen) {
        return;
    }
    const std::unique_ptr<Chosen> chosen(std::exchange(group->chosen, nullptr));
    sqlite3_result_value(context, chosen->value.get());
}

template <End end>
void Register(sqlite3* connection, const char* name) {
    Check(connection,
          sqlite3_create_function_v2(connection, name, -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                     nullptr, nullptr, Step<end>, Finish, nullptr));
}

} // namespace

void RegisterFunctions(sqlite3* connection, const NowSource& now) {
    RegisterClock(connection, "dialect_now", Now, now);
    RegisterClock(connection, "dialect_date", Today, now);
    for (const auto& list : {TextFunctions(), NumberFunctions(), DateFunctions(), FormatFunctions()}) {
        for (const ScalarFunction& function : list) {
            Check(connection, sqlite3_create_function_v2(connection, function.name, function.arguments,
                                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                                         function.call, nullptr, nullptr, nullptr));
        }
    }
    Register<End::First>(connection, "dialect_first");
    Register<End::Last>(connection, "dialect_last");
}

} // namespace velmora::engine::sqlite
