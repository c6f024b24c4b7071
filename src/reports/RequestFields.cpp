#include "reports/RequestFields.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr NamedValue<DayChoice> dayChoices[] = {
    {"next", DayChoice::NextWorkingDay}, {"current", DayChoice::CurrentDay}, {"other", DayChoice::OtherDay}};
constexpr NamedValue<DailyVariant> dailyLists[] = {
    {"starts", DailyVariant::Starts}, {"ends", DailyVariant::Ends}, {"combined", DailyVariant::Combined}};
constexpr NamedValue<ExceptionType> exceptionTypes[] = {{"space", ExceptionType::SpaceType},
                                                        {"area1", ExceptionType::FirstArea},
                                                        {"area2", ExceptionType::SecondArea},
                                                        {"area3", ExceptionType::ThirdArea},
                                                        {"not-checked-in", ExceptionType::NotCheckedIn}};
constexpr NamedValue<UsageBreakdown> usageBreakdowns[] = {{"location", UsageBreakdown::Locations},
                                                          {"area1", UsageBreakdown::FirstArea},
                                                          {"area2", UsageBreakdown::SecondArea},
                                                          {"area3", UsageBreakdown::ThirdArea}};
// By the index of the option button.
constexpr NamedValue<qint16> layoutNames[] = {
    {"work-requests", 1},    {"setup", 2},    {"takedown", 3}, {"phone-connect", 4},
    {"phone-disconnect", 5}, {"occupant", 6}, {"reminder", 7}, {"directory", 9}};
constexpr NamedValue<DeliveryTarget> targets[] = {
    {"text", DeliveryTarget::TextFile}, {"html", DeliveryTarget::HtmlFile},   {"mail", DeliveryTarget::Mail},
    {"pdf", DeliveryTarget::PdfFile},   {"printer", DeliveryTarget::Printer}, {"preview", DeliveryTarget::Preview}};
constexpr NamedValue<Orientation> orientations[] = {{"portrait", Orientation::Portrait},
                                                    {"landscape", Orientation::Landscape}};
constexpr NamedValue<qint16> leaderStyles[] = {{"none", 0}, {"boxes", 1}, {"lines", 2}};

constexpr const char* startupArgument = "startup-argument";
constexpr const char* startupHelp = "only what is named so or begins with it";

void Visit(DaySelection& days, FieldVisitor& visitor) {
    visitor.Choice("day", dayChoices, days.choice, "the next working day, today, or another day");
    if (visitor.BelongTo("day", "other", days.choice == DayChoice::OtherDay, {u"date"_s, u"days"_s})) {
        visitor.Day("date", days.otherDate, "the other day, or the first of them");
        visitor.Count("days", days.number, "how many days from there on");
    }
}

struct VisitEach {
    FieldVisitor& visitor;

    void operator()(DailyRequest& request) const {
        visitor.Choice("list", dailyLists, request.variant, "what the reservations do on the day");
        Visit(request.days, visitor);
        visitor.Flag("brief", request.brief, "one line for each reservation");
        visitor.Flag("exclude-completed-moves", request.excludeCompletedMoves, "without those moved already");
        visitor.Flag("exclude-completed-phones", request.excludeCompletedPhones, "without those whose phones are done");
        visitor.Flag("exclude-conference-rooms", request.excludeConferenceRooms, "without conference rooms");
        visitor.Flag("include-notes", request.includeNotes, "with the notes of the reservations");
        visitor.Flag("include-phone", request.includePhone, "with telephone information");
        visitor.Flag("one-page", request.onePage, "a page for each reservation");
        visitor.Text(startupArgument, request.startupArgument, startupHelp);
    }
    void operator()(OccupancyRequest& request) const {
        Visit(request.days, visitor);
        visitor.Flag("non-permanent", request.nonPermanent, "without permanent occupants");
        visitor.Flag("include-unreserved", request.includeUnreserved, "also whoever and whatever has no reservation");
        visitor.Text(startupArgument, request.startupArgument, startupHelp);
    }
    void operator()(ExceptionRequest& request) const {
        visitor.Choice("type", exceptionTypes, request.type, "outside of what, or reservations not checked in");
        visitor.Day("date", request.date, "the day of the report");
        visitor.Flag("exclude-conference-rooms", request.excludeConferenceRooms, "without conference rooms");
        visitor.Text(startupArgument, request.startupArgument, startupHelp);
    }
    void operator()(UsageRequest& request) const {
        visitor.Choice("by", usageBreakdowns, request.breakdown, "locations, or persons by area");
        visitor.Day("date", request.date, "the day of the report");
        visitor.Flag("detail", request.detail, "also which locations or persons");
    }
    void operator()(LayoutRequest& request) const {
        visitor.Choice("report", layoutNames, request.layout, "the layout");
        visitor.Day("start", request.start, "the first day");
        visitor.Day("end", request.end, "the day after the last one");
        visitor.Flag("exclude-conference-rooms", request.excludeConferenceRooms, "without conference rooms");
        visitor.Flag("completion-filter", request.completionFilter, "uncompleted or non-permanent only");
    }
};

} // namespace

void VisitFields(ReportRequest& request, FieldVisitor& visitor) {
    std::visit(VisitEach{visitor}, request);
}

void VisitFields(Delivery& delivery, FieldVisitor& visitor) {
    visitor.Choice("to", targets, delivery.target, "where the report goes");
    visitor.Text("output", delivery.file, "the file, or - for standard output");
    visitor.Text("printer", delivery.printer, "the printer, in place of the default one");
    visitor.Text("font", delivery.font, nullptr);
    visitor.Choice("orientation", orientations, delivery.orientation, "how the paper is held");
    visitor.Choice("leader", leaderStyles, delivery.leaderStyle, "how a label is tied to its value");
    visitor.Flag("continuous", delivery.continuous, nullptr);
    visitor.Recipients("mail-to", delivery.recipients, "who gets the report by mail; may be given again");
}

std::vector<ReportKind> ReportKinds() {
    return {
        {"daily", "the reservations that start, that end, or both on the day", DailyRequest()},
        {"occupant", "the locations and who is there, by location", OccupancyRequest()},
        {"directory", "the persons and where they are, by name", OccupancyRequest{OccupancyList::Directory}},
        {"exception", "persons outside of their space type or area; reservations that are not checked in",
         ExceptionRequest()},
        {"usage", "how many locations or persons are unreserved, permanently reserved or reserved for a time",
         UsageRequest()},
        {"layout", "one of the report layouts in the data directory", LayoutRequest()},
    };
}

} // namespace velmora
