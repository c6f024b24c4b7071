#pragma once

#include "base/services/Clock.h"

namespace velmora {

// The computer's clock in its own time zone.
class SystemClock : public Clock {
public:
    DateTime Now() const override;
};

// A clock that stands still.
class FixedClock : public Clock {
public:
    explicit FixedClock(DateTime now) : now_(now) {}
    DateTime Now() const override { return now_; }

private:
    DateTime now_;
};

} // namespace velmora
