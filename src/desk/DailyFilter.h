#pragma once

#include "desk/DailyMode.h"
#include "desk/DailyRow.h"

namespace velmora {

// Decides which rows a daily report leaves out.
class DailyFilter {
public:
    // `namePrefix`: only assets whose name begins with it, letter case included; empty lets all through.
    DailyFilter(DailyVariant variant, const DeskState& options, const QString& namePrefix);
    bool LeavesOut(const DailyRow& row) const;

private:
    bool excludeConferenceRooms_;
    // The flags of a task that is done, in the fields of the variant; null when done tasks are listed as well.
    engine::Field DailyRow::*completedMove_ = nullptr;
    engine::Field DailyRow::*completedPhone_ = nullptr;
    QByteArray namePrefix_;
};

} // namespace velmora
