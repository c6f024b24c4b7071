#include "tasks/TaskQuery.h"

#include "data/AssetRules.h"
#include "data/Helpers.h"
#include "tasks/TaskKind.h"

namespace velmora {

using namespace Qt::StringLiterals;

QString TaskQuery(const TaskChoices& choices, const QString& startupArgument) {
    const TaskKind task = TaskOfViewType(choices.ViewType);
    const bool starts = task == TaskKind::MoveIn || task == TaskKind::PhoneConnect;
    const DateTime first = StartOfDay(choices.DateRange1.StartDate.value());
    const DateTime last = StartOfDay(choices.DateRange1.EndDate.value());
    // What begins just before midnight is work of the day that follows, what ends just after it of the day before.
    const DateTime after = first + std::chrono::minutes(starts ? -3 : 2);
    const DateTime before = last + std::chrono::minutes(starts ? -2 : 2);
    const QString field = starts ? u"Start"_s : u"End"_s;
    QString text = u"SELECT * FROM Asset INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset where "_s + field +
                   u" > "_s + SqlDateTime(after) + u" and "_s + field + u" < "_s + SqlDateTime(before);
    if (const QString prefix = startupArgument.trimmed(); !prefix.isEmpty()) {
        text += u" And Asset.Name Like "_s + SqlText(prefix + u'*');
    }
    if (choices.chkCompleted) {
        text += u" And "_s + TaskField(task) + u" = False"_s;
    }
    if (choices.chkConferenceView) {
        text += u" And Asset.AssetID >= "_s + QString::number(firstOtherAsset);
    }
    return text;
}

} // namespace velmora
