#include "reports/ExceptionReport.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "data/Helpers.h"
#include "reports/CellTexts.h"
#include "reports/PrintedAt.h"
#include "reports/ReadTable.h"

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

// A kind without `assigned` lists the reservations that are not checked in.
struct ExceptionKind {
    const char* subtitle;
    // The fourth column's caption.
    const char* caption;
    // The person's field, and the column and table that say which locations have what it names.
    const char* assigned;
    const char* allowed;
    const char* allowedTable;
};

// In the order of ExceptionType.
constexpr ExceptionKind kinds[] = {
    {"Persons outside of Space Type", "Space Type", "EventType", "EventType", "[Asset/Event]"},
    {"Persons outside of First Area", "Area", "Area", "AreaName", "[Asset/Area]"},
    {"Persons outside of Second Area", "Area", "Area2", "AreaName", "[Asset/Area]"},
    {"Persons outside of Third Area", "Area", "Area3", "AreaName", "[Asset/Area]"},
    {"Reservations Not Checked In", "Organization", nullptr, nullptr, nullptr},
};

class ExceptionReport {
public:
    ExceptionReport(ReportContext& context, Steps& steps, ReportFrame& frame, const ExceptionRequest& request)
        : context_(context), steps_(steps), frame_(frame), request_(request),
          kind_(kinds[static_cast<size_t>(request.type)]), locale_(context.program.services().localeText),
          namePrefix_(request.startupArgument.toStdString()),
          table_({"Location", "Person", "Space Type", kind_.caption, "From - To"}) {}

    void Run();

private:
    void ChooseDay();
    void PrintTitle();
    QString RowsText() const;
    // The table's row for the current person; none when the person is where they belong, or nowhere.
    std::optional<ReportTable::Row> Misplaced(const Recordset& persons) const;
    QString ReservationText(const Recordset& person) const;
    bool LeavesOut(std::string_view locationName) const;
    // The table's row for the current reservation; none when it is left out.
    std::optional<ReportTable::Row> NotCheckedIn(const Recordset& reservations) const;

    template <typename Function>
    bool Step(Function&& statement) {
        return steps_.Step(QString(), std::forward<Function>(statement));
    }

    ReportContext& context_;
    Steps& steps_;
    ReportFrame& frame_;
    const ExceptionRequest& request_;
    const ExceptionKind& kind_;
    const LocaleText& locale_;
    const std::string namePrefix_;

    ReportTable table_;
    // The report date and the day after it as the query texts have them, between "#" marks.
    QString day_;
    QString nextDay_;
    std::unique_ptr<Recordset> rows_;
};

void ExceptionReport::Run() {
    // Without a day there is nothing to print; the frame returns the window to idle.
    if (!Step([this] { ChooseDay(); })) {
        return;
    }
    frame_.SetOrientation();
    frame_.PreparePrinter();
    context_.job.ResetTabStops();
    Step([this] { PrintTitle(); });
    const bool opened = Step([this] { rows_ = context_.database.OpenRecordset(RowsText()); });
    const auto rowOf = [this](const Recordset& rows) {
        return kind_.assigned != nullptr ? Misplaced(rows) : NotCheckedIn(rows);
    };
    if (!opened || ReadTable(context_, steps_, frame_, *rows_, rowOf, table_)) {
        rows_.reset();
        frame_.ShowSending();
        table_.Print(context_, steps_);
    }
    frame_.End();
}

void ExceptionReport::ChooseDay() {
    if (!request_.date) {
        throw ProgramError(ErrorNumber::TypeMismatch, u"The box for the report date holds no date"_s);
    }
    day_ = SqlDate(*request_.date);
    nextDay_ = SqlDate(*request_.date + std::chrono::days(1));
}

void ExceptionReport::PrintTitle() {
    context_.job.PrintReportTitle(
        Translate(u"Exception Report"_s), Translate(QString::fromLatin1(kind_.subtitle)),
        PrintedAt(context_.program, u"Printed at"_s, u" for "_s + locale_.ShortDate(*request_.date)));
}

QString ExceptionReport::RowsText() const {
    if (kind_.assigned != nullptr) {
        return u"Select * from Person order by "_s + QLatin1StringView(kind_.assigned);
    }
    return u"SELECT Asset.Name, Reservation.Start, Reservation.End, Reservation.Name, Reservation.Asset, "
           "Reservation.EventType, Reservation.LastName, Reservation.FirstName, Reservation.Organization FROM Asset "
           "INNER JOIN Reservation ON Asset.AssetID = Reservation.Asset Where (((Reservation.Start) < "_s +
           nextDay_ + u") And ((Reservation.End) > "_s + day_ +
           u") And ((Reservation.Permanent) = False) And ((Reservation.SLockStart) = False) And ((Asset.Location) = "
           "True) And ((Reservation.Asset) > "_s +
           // The conference rooms are the assets up to here.
           (request_.excludeConferenceRooms ? u"256"_s : u"0"_s) + u")) ORDER BY Asset.Name, Reservation.Start"_s;
}

QString ExceptionReport::ReservationText(const Recordset& person) const {
    return u"Select * from Reservation Where LastName = "_s + SqlText(person["LastName"].ToText()) +
           u" and FirstName = "_s + SqlText(person["FirstName"].ToText()) + u" and End > "_s + day_ +
           u" and Start < "_s + nextDay_;
}

std::optional<ReportTable::Row> ExceptionReport::Misplaced(const Recordset& persons) const {
    engine::Database& database = context_.database;
    const auto reservations = database.OpenRecordset(ReservationText(persons));
    if (reservations->EndOfFile()) {
        return {};
    }
    // Whoever has several reservations is judged by the first.
    const Recordset& reservation = *reservations;
    const engine::Field asset = reservation["Asset"];
    if (asset.IsNull()) {
        return {};
    }
    const engine::Field assigned = persons[kind_.assigned];
    const auto belongs = database.OpenRecordset(
        u"Select * from "_s + QLatin1StringView(kind_.allowedTable) + u" where AssetID = "_s + asset.ToText() +
        u" and "_s + QLatin1StringView(kind_.allowed) + u" = "_s + SqlText(assigned.ToText()));
    if (!belongs->EndOfFile()) {
        return {};
    }
    const auto location = database.OpenRecordset(u"Select * from Asset where AssetID = "_s + asset.ToText());
    if (location->EndOfFile()) {
        return {};
    }
    return ReportTable::Row{
        Utf8((*location)["Name"]), PersonName(reservation["LastName"], reservation["FirstName"]),
        Utf8(reservation["EventType"]), Utf8(assigned),
        PeriodText(locale_, reservation["Start"], reservation["End"], reservation["Permanent"].ToBool())};
}

bool ExceptionReport::LeavesOut(std::string_view locationName) const {
    return !locationName.starts_with(namePrefix_) || locationName.starts_with("Unused");
}

std::optional<ReportTable::Row> ExceptionReport::NotCheckedIn(const Recordset& reservations) const {
    if (LeavesOut(reservations["Asset.Name"].Utf8())) {
        return {};
    }
    ReportTable::Row row{Utf8(reservations["Asset.Name"])};
    if (reservations["Start"].IsNull()) {
        return row;
    }
    row[1] = PersonName(reservations["LastName"], reservations["FirstName"]);
    row[2] = Utf8(reservations["EventType"]);
    row[3] = Utf8(reservations["Organization"]);
    row[4] = PeriodText(locale_, reservations["Start"], reservations["End"], false);
    return row;
}

} // namespace

void PrintExceptionReport(ReportContext& context, const ExceptionRequest& request) {
    Steps steps(context.program.services().errors, u"Service Administration"_s, u"Print Exception Report"_s, QString());
    ReportFrame frame(context, steps);
    if (frame.Start()) {
        ExceptionReport(context, steps, frame, request).Run();
    }
}

} // namespace velmora
