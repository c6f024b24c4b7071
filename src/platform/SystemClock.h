#pragma once

#include "base/services/Clock.h"

#include <QDateTime>

namespace velmora {

// The computer's clock in its own time zone.
class SystemClock : public Clock {
public:
    DateTime Now() const override {
        const QDateTime now = QDateTime::currentDateTime();
        return *MakeDateTime({now.date().year(), now.date().month(), now.date().day(), now.time().hour(),
                              now.time().minute(), now.time().second()});
    }
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
