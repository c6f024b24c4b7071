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

// What a layout's formula is put together from.
struct LayoutTerms {
    qint16 index;
    // %1 and %2 are the arguments of the two dates.
    QStringView base;
    // With the completion filter.
    QStringView completed;
    // It can leave out conference rooms.
    bool knowsAssets;
};

constexpr std::array layoutTerms = std::to_array<LayoutTerms>({
    {1, u"{WorkOrder.Requested} >= Date(%1) And {WorkOrder.Requested} < Date(%2)", u" and {WorkOrder.Completed} = No",
     false},
    {2, starts, u" and {Reservation.SLockStart} = No", true},
    {3, ends, u" and {Reservation.SLockEnd} = No", true},
    {4, starts, u" and {Reservation.TLockStart} = No", true},
    {5, ends, u" and {Reservation.TLockEnd} = No", true},
    {6, overlaps, notPermanent, true},
    {7, u"{Reservation.End} > Date(%1) And {Reservation.End} < Date(%2)", notPermanent, true},
    {9, overlaps, u"", false},
});

constexpr std::array layoutChoices = std::to_array<LayoutChoice>({
    {1, u"Work Requests", u"WorkOrd.rpx"},
    {2, u"Setup", u"Setup.rpx"},
    {3, u"Takedown", u"Takedown.rpx"},
    {4, u"Phone Conect", u"Connect.rpx"},
    {5, u"Phone Disconnect", u"Disconn.rpx"},
    {6, u"Occupant", u"Occupant.rpt"},
    {7, u"Reminder", u"Reminder.rpx"},
    {9, u"Directory", u"Directry.rpx"},
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
    const auto terms = std::find_if(layoutTerms.begin(), layoutTerms.end(),
                                    [&](const LayoutTerms& each) { return each.index == request.layout; });
    if (terms == layoutTerms.end()) {
        return {};
    }
    QString formula = terms->base.toString().arg(DateArguments(request.start), DateArguments(request.end));
    if (request.completionFilter) {
        formula += terms->completed;
    }
    if (request.excludeConferenceRooms && terms->knowsAssets) {
        formula += u" and {Asset.AssetID} >= "_s + QString::number(firstOtherAsset);
    }
    return formula;
}

} // namespace velmora::layouts
