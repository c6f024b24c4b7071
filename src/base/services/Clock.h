#pragma once

#include "base/DateTime.h"

namespace velmora {

// The wall clock of this desk.
class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
    Date Today() const { return DateOf(Now()); }
};

} // namespace velmora
