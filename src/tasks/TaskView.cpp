#include "tasks/TaskView.h"

#include "data/ReservationTime.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// The period in one line; of a reservation without an end, its start alone.
QString Period(const engine::Recordset& rows, const LocaleText& locale) {
    const auto start = rows["Start"].ToDateTime();
    const auto end = rows["End"].ToDateTime();
    const bool permanent = rows["Permanent"].ToBool();
    if (!start) {
        return {};
    }
    // The end of a permanent reservation is not shown.
    return end || permanent ? ReservationTimeText(locale, *start, end.value_or(*start), permanent)
                            : locale.GeneralDate(*start);
}

struct ShownText {
    const char16_t* caption;
    QString TaskDetails::*text;
};

constexpr std::array shownTexts = {
    ShownText{u"Name", &TaskDetails::frEvent},
    ShownText{u"Last Name", &TaskDetails::lblLastName},
    ShownText{u"First Name", &TaskDetails::lblFirstName},
    ShownText{u"Organization", &TaskDetails::lblOrganization},
    ShownText{u"Duration", &TaskDetails::lblEnd},
    ShownText{u"Event Type", &TaskDetails::lblEvent},
    ShownText{u"Attendees", &TaskDetails::lblAttendees},
    ShownText{u"Location", &TaskDetails::lblAssetName},
};

} // namespace

TaskDetails TaskDetails::Read(const engine::Recordset& rows, const LocaleText& locale) {
    TaskDetails details;
    details.frEvent = rows["Reservation.Name"].ToText();
    details.lblLastName = rows["LastName"].ToText();
    details.lblFirstName = rows["FirstName"].ToText();
    details.lblAsset = rows["AssetID"].ToText();
    details.lblAssetName = rows["Asset.Name"].ToText();
    details.lblAttendees = rows["Attendees"].ToText();
    details.lblEnd = Period(rows, locale);
    details.lblEvent = rows["EventType"].ToText();
    details.lblOrganization = rows["Organization"].ToText();
    details.lblID = rows["ID"].ToText();
    for (const TaskKind task : allTasks) {
        details.Done(task) = rows[TaskField(task).toUtf8().constData()].ToBool();
    }
    return details;
}

QStringList TaskDetails::Differences(const TaskDetails& other) const {
    QStringList captions;
    for (const ShownText& shown : shownTexts) {
        if (this->*shown.text != other.*shown.text) {
            captions += QString::fromUtf16(shown.caption);
        }
    }
    for (const TaskKind task : allTasks) {
        if (Done(task) != other.Done(task)) {
            captions += TaskCaption(task);
        }
    }
    return captions;
}

} // namespace velmora
