#include "platform/SystemClock.h"

#include <ctime>

namespace velmora {

DateTime SystemClock::Now() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    // A leap second counts as the second before it.
    return *MakeDateTime({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                          std::min(local.tm_sec, 59)});
}

} // namespace velmora
