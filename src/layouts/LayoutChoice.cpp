#include "layouts/LayoutChoice.h"

#include "data/AssetRules.h"

#include <algorithm>
#include <array>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView starts = u"{Reservation.Start} >= Date(%1) And {Reservation.Start} < Date(%2)";
constexpr QStringView ends = u"{Reservation.End} > Date(%1) And {Reservation.End} <= Date(%2)";
constexpr QStringView overlaps = u"{Reservation.End} > Date(%1) And {Reservation.Start} < Date(%2)";
constexpr QStringView notPermanent = u" and {Reservation.Permanent} = No";

constexpr std::array layoutChoices = std::to_array<LayoutChoice>({
    {1, u"&Work Requests", u"WorkOrd.rpx", u"{WorkOrder.Requested} >= Date(%1) And {WorkOrder.Requested} < Date(%2)",
     u" and {WorkOrder.Completed} = No", false},
    {2, u"Se&tup", u"Setup.rpx", starts, u" and {Reservation.SLockStart} = No", true},
    {3, u"Ta&kedown", u"Takedown.rpx", ends, u" and {Reservation.SLockEnd} = No", true},
    {4, u"&Phone Conect", u"Connect.rpx", starts, u" and {Reservation.TLockStart} = No", true},
    {5, u"Phone &Disconnect", u"Disconn.rpx", ends, u" and {Reservation.TLockEnd} = No", true},
    {6, u"&Occupant", u"Occupant.rpt", overlaps, notPermanent, true},
    {7, u"Re&minder", u"Reminder.rpx", u"{Reservation.End} > Date(%1) And {Reservation.End} < Date(%2)", notPermanent,
     true},
    {9, u"D&irectory", u"Directry.rpx", overlaps, u"", false},
});

// The arguments of Date: 2026,03,10.
QString DateArguments(const std::optional<Date>& day) {
    if (!day) {
        return {};
    }
    const DateTimeFields fields = Fields(StartOfDay(*day));
    const QChar zero = u'0';
    return u"%1,%2,%3"_s.arg(fields.year, 4, 10, zero).arg(fields.month, 2, 10, zero).arg(fields.day, 2, 10, zero);
}

} // namespace

std::span<const LayoutChoice> LayoutChoices() {
    return layoutChoices;
}

const LayoutChoice* FindLayoutChoice(qint16 index) {
    const auto found = std::find_if(layoutChoices.begin(), layoutChoices.end(),
                                    [&](const LayoutChoice& choice) { return choice.index == index; });
    return found == layoutChoices.end() ? nullptr : &*found;
}

std::optional<LayoutPageView> ShowReportSelection(qint16 index, bool isSet) {
    if (!isSet) {
        return std::nullopt;
    }
    switch (index) {
    case 6:
    case 7:
        return LayoutPageView{true, u"Non-Permanent Only"_s};
    case 9:
    case 10:
    case 11:
        return LayoutPageView{false, {}};
    default:
        return LayoutPageView{true, u"Uncompleted Only"_s};
    }
}

QString SelectionFormula(const LayoutRequest& request) {
    const LayoutChoice* choice = FindLayoutChoice(request.layout);
    if (choice == nullptr) {
        return {};
    }
    QString formula = choice->range.toString().arg(DateArguments(request.start), DateArguments(request.end));
    if (request.completionFilter) {
        formula += choice->completed;
    }
    if (request.excludeConferenceRooms && choice->knowsAssets) {
        formula += u" and {Asset.AssetID} >= "_s + QString::number(firstOtherAsset);
    }
    return formula;
}

} // namespace velmora::layouts
