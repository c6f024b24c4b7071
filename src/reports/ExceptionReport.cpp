#include "reports/ExceptionReport.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "reports/ExceptionRows.h"
#include "reports/ReportFrame.h"
#include "reports/ReportTable.h"

#include <array>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

struct ExceptionKind {
    const char* subtitle;
    // The fourth column's caption.
    const char* caption;
};

// By ExceptionType.
constexpr std::array<ExceptionKind, 5> kinds{{
    {"Persons outside of Space Type", "Space Type"},
    {"Persons outside of First Area", "Area"},
    {"Persons outside of Second Area", "Area"},
    {"Persons outside of Third Area", "Area"},
    {"Reservations Not Checked In", "Organization"},
}};

std::array<Column<ExceptionRow>, 5> Columns(const ExceptionKind& kind) {
    using Row = ExceptionRow;
    return {{
        {"Location", [](QByteArray& cell, const Row& row, const LocaleText&) { Append(cell, row.location); }},
        {"Person",
         [](QByteArray& cell, const Row& row, const LocaleText&) {
             if (row.occupied) {
                 AppendPersonName(cell, row);
             }
         }},
        {"Space Type", [](QByteArray& cell, const Row& row, const LocaleText&) { Append(cell, row.eventType); }},
        {kind.caption, [](QByteArray& cell, const Row& row, const LocaleText&) { Append(cell, row.fourth); }},
        {"From - To",
         [](QByteArray& cell, const Row& row, const LocaleText& locale) { AppendPeriod(cell, row, locale); }},
    }};
}

} // namespace

void PrintExceptionReport(ReportContext& context, const ExceptionRequest& request) {
    ReportFrame frame(context, u"Print Exception Report"_s);
    const LocaleText& locale = context.program.services().localeText;
    ReportDays days;
    // Without a day there is nothing to print; the frame returns the window to idle.
    if (!frame.Start() || !frame.Step([&] { days = OneReportDay(request.date, locale); })) {
        return;
    }
    frame.SetOrientation();
    frame.PreparePrinter();
    const QString printedAt = frame.PrintedAt(u"Printed at"_s, days);
    const ExceptionRows rows = GatherExceptions(request, days, frame.Gather());
    frame.ShowSending(rows);
    const ExceptionKind& kind = kinds.at(static_cast<size_t>(request.type));
    context.job.PrintReportTitle(Translate(u"Exception Report"_s), Translate(QString::fromLatin1(kind.subtitle)),
                                 printedAt);
    PrintTable<ExceptionRow>(context, Columns(kind), rows.rows);
    frame.End(rows, request.type == ExceptionType::NotCheckedIn ? u"Cancelled after %1 of %2 reservations"_s
                                                                : u"Cancelled after %1 of %2 persons"_s);
}

} // namespace velmora
