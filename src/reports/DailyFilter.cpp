#include "reports/DailyFilter.h"

namespace velmora {

namespace {
// Assets below this number are conference rooms.
constexpr qint64 firstOtherAsset = 256;
} // namespace

DailyFilter::DailyFilter(const DailyRequest& request)
    : excludeConferenceRooms_(request.excludeConferenceRooms), namePrefix_(request.startupArgument.toUtf8()) {
    // A combined report lists both tasks of a reservation, so neither flag alone makes it done.
    if (request.variant != DailyVariant::Combined) {
        const bool starts = request.variant == DailyVariant::Starts;
        if (request.excludeCompletedMoves) {
            completedMove_ = starts ? &DailyRow::SLockStart : &DailyRow::SLockEnd;
        }
        if (request.excludeCompletedPhones) {
            completedPhone_ = starts ? &DailyRow::TLockStart : &DailyRow::TLockEnd;
        }
    }
}

bool DailyFilter::LeavesOut(const DailyRow& row) const {
    const std::string_view name = row.AssetName.Utf8();
    return (excludeConferenceRooms_ && row.AssetID.ToInteger() < firstOtherAsset) || name.starts_with("Unused") ||
           (!row.Location.IsNull() && !row.Location.ToBool()) || row.EventType.Utf8() == "UNUSED" ||
           !name.starts_with(std::string_view(namePrefix_.constData(), static_cast<size_t>(namePrefix_.size()))) ||
           (completedMove_ != nullptr && (row.*completedMove_).ToBool()) ||
           (completedPhone_ != nullptr && (row.*completedPhone_).ToBool());
}

} // namespace velmora
