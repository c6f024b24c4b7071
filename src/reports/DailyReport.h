#pragma once

#include "reports/Gather.h"
#include "reports/ReportContext.h"

#include <array>

namespace velmora {

// The texts of all rows are UTF-8; an empty field is an empty text.

// Who reserved.
struct DailyPerson {
    // False when there is no such person, who then has no texts.
    bool found = false;
    QUtf8StringView firstName;
    QUtf8StringView lastName;
    QUtf8StringView secretaryFirst;
    QUtf8StringView secretaryLast;
    QUtf8StringView storage;
    QUtf8StringView phone;
    QUtf8StringView extension;
    std::array<QUtf8StringView, 3> codes;
};

// Where the guest extension is that was booked with a reservation.
struct DailyLocation {
    // False when there is no such asset, which then has no texts.
    bool found = false;
    QUtf8StringView name;
    QUtf8StringView description;
    QUtf8StringView jack;
    QUtf8StringView port;
    QUtf8StringView stationType;
    QUtf8StringView switchInterface;
};

struct DailyNote {
    QUtf8StringView category;
    QUtf8StringView name;
    QUtf8StringView text;
};

// One reservation of a daily list.
struct DailyLine {
    qint32 reservation = 0;
    qint32 asset = 0;
    std::optional<DateTime> start;
    std::optional<DateTime> end;
    // The tasks that are done.
    bool movedIn = false;
    bool movedOut = false;
    bool phoneConnected = false;
    bool phoneDisconnected = false;
    QUtf8StringView assetName;
    QUtf8StringView eventType;
    QUtf8StringView name;
    QUtf8StringView organization;
    QUtf8StringView permanent;
    QUtf8StringView attendees;
    QUtf8StringView lastName;
    QUtf8StringView firstName;
    QUtf8StringView storage;
    QUtf8StringView extension;
    QUtf8StringView defaultExtension;
    QUtf8StringView jack;
    QUtf8StringView port;
    QUtf8StringView stationType;
    QUtf8StringView switchInterface;

    // The rest is empty where it was not asked for or could not be read.
    std::optional<DailyPerson> person;
    // Of the first guest extension.
    std::optional<DailyLocation> guestLocation;
    std::vector<DailyNote> notes;
};

inline constexpr TextField<DailyLine> dailyTexts[] = {
    {"Asset.Name", &DailyLine::assetName},
    {"EventType", &DailyLine::eventType},
    {"Reservation.Name", &DailyLine::name},
    {"Organization", &DailyLine::organization},
    {"Permanent", &DailyLine::permanent},
    {"Attendees", &DailyLine::attendees},
    {"LastName", &DailyLine::lastName},
    {"FirstName", &DailyLine::firstName},
    {"Storage", &DailyLine::storage},
    {"Extension", &DailyLine::extension},
    {"DefaultExtension", &DailyLine::defaultExtension},
    {"Jack", &DailyLine::jack},
    {"Port", &DailyLine::port},
    {"StationType", &DailyLine::stationType},
    {"SwitchInterface", &DailyLine::switchInterface},
};

using DailyRows = Gathered<DailyLine>;

// Gathers the lines of a daily list in the order in which they are printed: persons for a list that is not brief, guest
// extensions where it includes telephones, notes where it includes them. Without days the query lacks its parameters,
// which is reported as a failure of it.
DailyRows GatherDaily(const DailyRequest& request, const std::optional<ReportDays>& days, const Gathering& gathering);

// Prints the list of reservations that start, end, or both on the requested days onto the output target chosen
// before.
//
// Refused with a message while another report runs. Failures are reported with module "Service Administration" and
// procedure "Print Daily Report".
void PrintDailyReport(ReportContext& context, const DailyRequest& request);

} // namespace velmora
