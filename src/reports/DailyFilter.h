#pragma once

#include "reports/DailyRow.h"
#include "reports/Requests.h"

namespace velmora {

// Decides which rows a daily report leaves out.
class DailyFilter {
public:
    // The start-up argument counts letter case included.
    explicit DailyFilter(const DailyRequest& request);
    bool LeavesOut(const DailyRow& row) const;

private:
    bool excludeConferenceRooms_;
    // The flags of a task that is done, in the fields of the variant; null when done tasks are listed as well.
    engine::Field DailyRow::*completedMove_ = nullptr;
    engine::Field DailyRow::*completedPhone_ = nullptr;
    QByteArray namePrefix_;
};

} // namespace velmora
