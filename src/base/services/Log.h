#pragma once

#include <QString>

namespace velmora {

// The program's own record of failures. Writing never fails: a log that cannot be written is silent.
class Log {
public:
    virtual ~Log() = default;
    // `entry` may have several lines.
    virtual void Write(const QString& entry) noexcept = 0;
};

} // namespace velmora
