#pragma once

#include "base/DateTime.h"
#include "base/services/Mail.h"
#include "base/services/Printers.h"

#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace velmora {

// What a report is asked to be: values that pages and command lines fill in and that the report routines only read.

// The three choices of the day, in the order of the option buttons.
enum class DayChoice { NextWorkingDay, CurrentDay, OtherDay };

// The days that a report covers, before it is known which day it is run on.
struct DaySelection {
    DayChoice choice = DayChoice::NextWorkingDay;
    // The first day of the other-day choice, and how many there are. A report of another day without a date fails.
    std::optional<Date> otherDate{};
    int number = 1;
    friend bool operator==(const DaySelection&, const DaySelection&) = default;
};

enum class DailyVariant { Starts, Ends, Combined };

// The list of reservations that start, end, or both.
struct DailyRequest {
    DailyVariant variant = DailyVariant::Starts;
    DaySelection days{};
    bool brief = false;
    bool excludeCompletedMoves = false;
    bool excludeCompletedPhones = false;
    bool excludeConferenceRooms = false;
    bool includeNotes = false;
    bool includePhone = false;
    bool onePage = false;
    // Only assets whose name begins with it; empty for all.
    QString startupArgument{};
    friend bool operator==(const DailyRequest&, const DailyRequest&) = default;
};

// By location, or by person.
enum class OccupancyList { Occupants, Directory };

// Who is where.
struct OccupancyRequest {
    OccupancyList list = OccupancyList::Occupants;
    DaySelection days{};
    // Without permanent occupancies.
    bool nonPermanent = false;
    // Also locations without a reservation, or persons without a location.
    bool includeUnreserved = false;
    // Only locations whose name begins with it; empty for all.
    QString startupArgument{};
    friend bool operator==(const OccupancyRequest&, const OccupancyRequest&) = default;
};

// Persons outside of what is assigned to them, and reservations that are not checked in; in the order of the option
// buttons.
enum class ExceptionType { SpaceType, FirstArea, SecondArea, ThirdArea, NotCheckedIn };

struct ExceptionRequest {
    ExceptionType type = ExceptionType::SpaceType;
    // A report without a date fails.
    std::optional<Date> date{};
    // Of the reservations that are not checked in.
    bool excludeConferenceRooms = false;
    // Of the reservations that are not checked in, only those of locations whose name begins with it; empty for all.
    QString startupArgument{};
    friend bool operator==(const ExceptionRequest&, const ExceptionRequest&) = default;
};

// Locations, or persons by area; in the order of the option buttons.
enum class UsageBreakdown { Locations, FirstArea, SecondArea, ThirdArea };

struct UsageRequest {
    UsageBreakdown breakdown = UsageBreakdown::Locations;
    // A report without a date fails.
    std::optional<Date> date{};
    // Also which locations or persons, not only how many.
    bool detail = false;
    friend bool operator==(const UsageRequest&, const UsageRequest&) = default;
};

// One of the report layouts in the data directory.
struct LayoutRequest {
    // The index of the layout's option button; 0 for none, which is refused.
    qint16 layout = 0;
    // From the start up to, and not including, the end. A report without one of them fails.
    std::optional<Date> start{};
    std::optional<Date> end{};
    bool excludeConferenceRooms = false;
    // Uncompleted only, or non-permanent only, as the layout has it.
    bool completionFilter = false;
    friend bool operator==(const LayoutRequest&, const LayoutRequest&) = default;
};

using ReportRequest = std::variant<DailyRequest, OccupancyRequest, ExceptionRequest, UsageRequest, LayoutRequest>;

// Where a report goes. A PDF file holds the pages of the printer.
enum class DeliveryTarget { Printer, Preview, Mail, TextFile, HtmlFile, PdfFile };

// How and where a report is delivered.
struct Delivery {
    DeliveryTarget target = DeliveryTarget::Preview;
    // Device name of the printer that pages are made for; empty for the current one.
    QString printer{};
    // Family name of the font of pages; empty for the current one.
    QString font{};
    // None: portrait, or as the layout has it.
    std::optional<Orientation> orientation{};
    // Of label and value lines, in place of the user's own setting: 0 none, 1 boxes, 2 lines.
    std::optional<qint16> leaderStyle{};
    // Without page breaks; printer, font and orientation stay as they are.
    bool continuous = false;
    // A path, or "-" for standard output; empty where a person is asked.
    QString file{};
    // Who gets the report by mail; none where a person is asked.
    std::vector<MailRecipient> recipients{};

    // It is drawn as the printer's pages and goes on paper or into a PDF file.
    bool ToPages() const { return target == DeliveryTarget::Printer || target == DeliveryTarget::PdfFile; }
    friend bool operator==(const Delivery&, const Delivery&) = default;
};

} // namespace velmora
