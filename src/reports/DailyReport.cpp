#include "reports/DailyReport.h"

#include "base/Translate.h"
#include "reports/DailyFilter.h"
#include "reports/DailyRow.h"
#include "reports/DetailBlocks.h"
#include "reports/DetailReader.h"
#include "reports/FieldText.h"
#include "reports/ReportDays.h"
#include "reports/ReportFrame.h"

#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// English.
QString TitleOf(DailyVariant variant) {
    switch (variant) {
    case DailyVariant::Starts:
        return u"Reservation Starts"_s;
    case DailyVariant::Ends:
        return u"Reservation Ends"_s;
    case DailyVariant::Combined:
        break;
    }
    return u"Reservation Starts and Ends"_s;
}

// The stored query whose rows are reported.
QString QueryOf(DailyVariant variant) {
    switch (variant) {
    case DailyVariant::Starts:
        return u"QReport3"_s;
    case DailyVariant::Ends:
        return u"QReport4"_s;
    case DailyVariant::Combined:
        break;
    }
    return u"QReport5"_s;
}

class DailyReport {
public:
    DailyReport(ReportContext& context, Steps& steps, ReportFrame& frame, const DailyRequest& request)
        : context_(context), steps_(steps), frame_(frame), request_(request),
          locale_(context.program.services().localeText) {}

    void Run();

private:
    void ChooseReport();
    void OpenRows();
    void PrintRows();
    // `details` is what was read ahead for the row; null when nothing was.
    void PrintRow(const DailyRow& row, ReservationDetails* details);
    void PrintLocationHeading(const DailyRow& row);
    void PrintReservationLine(const DailyRow& row);
    void PrintBriefBody(const DailyRow& row);
    void PrintFullBody(const DailyRow& row, const ReservationDetails* details);
    void PrintPhoneLines(const DailyRow& row, const ReservationDetails* details);
    void AppendPeriod(QByteArray& line, const DailyRow& row) const;

    // Runs one statement of the report as a step.
    template <typename Function>
    bool Step(Function&& statement) {
        return steps_.Step(QString(), std::forward<Function>(statement));
    }

    ReportContext& context_;
    Steps& steps_;
    ReportFrame& frame_;
    const DailyRequest& request_;
    const LocaleText& locale_;

    QString title_;
    QString printedAt_;
    std::optional<ReportDays> days_;
    std::unique_ptr<engine::Recordset> rows_;
    // Name of the asset of the last printed row; empty before the first.
    std::string lastAssetName_;
    QByteArray line_;
};

void DailyReport::Run() {
    Step([this] { ChooseReport(); });
    frame_.PreparePrinter();
    if (!request_.onePage) {
        Step([this] { context_.job.PrintReportTitle(title_, request_.startupArgument, printedAt_); });
    }
    context_.run.IncludePhoneInfo = request_.includePhone;
    if (Step([this] { OpenRows(); })) {
        PrintRows();
    }
    rows_.reset();
    frame_.End();
}

void DailyReport::ChooseReport() {
    const DateTime now = context_.program.services().clock.Now();
    printedAt_ = Translate(u"Printed at:"_s) + u' ' + locale_.GeneralDate(now);
    title_ = Translate(TitleOf(request_.variant));
    days_ = DailyReportDays(request_.days, DateOf(now), locale_);
    printedAt_ += days_->phrase;
}

void DailyReport::OpenRows() {
    const auto query = context_.database.OpenQueryDef(QueryOf(request_.variant));
    if (days_) {
        query->SetParameter(u"RStart", StartOfDay(days_->start));
        query->SetParameter(u"REnd", StartOfDay(days_->end));
    }
    auto rows = query->OpenRecordset(engine::RecordsetKind::Snapshot);
    if (!rows->EndOfFile()) {
        // A query that lacks a field is told once, and not with every row.
        static_cast<void>(DailyRow::Read(*rows));
    }
    rows_ = std::move(rows);
}

void DailyReport::PrintRows() {
    const DailyFilter filter(request_);
    DetailReader reader(context_.database, filter,
                        {.persons = !request_.brief,
                         .guestExtensions = !request_.brief && request_.includePhone,
                         .notes = request_.includeNotes});
    while (!rows_->EndOfFile()) {
        if (!frame_.BeforeRow(*rows_)) {
            return;
        }
        ReservationDetails* details = reader.Next(*rows_);
        DailyRow row;
        if (Step([&] { row = DailyRow::Read(*rows_); }) && !filter.LeavesOut(row)) {
            PrintRow(row, details);
        }
        if (!Step([this] { rows_->MoveNext(); })) {
            return;
        }
    }
    frame_.ShowSending();
}

void DailyReport::PrintRow(const DailyRow& row, ReservationDetails* details) {
    Step([&] { PrintLocationHeading(row); });
    Step([&] { PrintReservationLine(row); });
    if (request_.brief) {
        Step([&] { PrintBriefBody(row); });
    } else {
        PrintFullBody(row, details);
    }
    if (request_.includeNotes) {
        Step([&] {
            details != nullptr ? PrintNotes(context_, *details->notes)
                               : PrintReservationNotes(context_, static_cast<qint32>(row.ID.ToInteger()));
        });
    }
    if (!request_.brief) {
        // Sets this reservation off from the next.
        Step([this] { context_.job.PrintSectionHeading({}); });
    }
    lastAssetName_ = row.AssetName.Utf8();
}

void DailyReport::PrintLocationHeading(const DailyRow& row) {
    const FieldText name(row.AssetName);
    if (request_.variant == DailyVariant::Combined && row.AssetName.Utf8() == lastAssetName_) {
        return;
    }
    if (request_.onePage) {
        context_.job.PrintReportTitle(title_, name, printedAt_);
    } else if (request_.variant == DailyVariant::Combined) {
        context_.job.PrintSectionHeading(name);
    }
}

void DailyReport::AppendPeriod(QByteArray& line, const DailyRow& row) const {
    line += ": From ";
    if (const auto start = row.Start.ToDateTime()) {
        print::AppendUtf8(line, locale_.GeneralDate(*start));
    }
    const auto end = row.End.ToDateTime();
    if (end && Fields(*end).hour != 0) {
        line += " To ";
        print::AppendUtf8(line, locale_.GeneralDate(*end));
        return;
    }
    // An end in the hour after midnight closes the day before.
    line += " Through ";
    if (end) {
        print::AppendUtf8(line, locale_.GeneralDate(*end - std::chrono::days(1)));
    }
}

void DailyReport::PrintReservationLine(const DailyRow& row) {
    line_.clear();
    print::AppendUtf8(line_, FieldText(row.ReservationName));
    AppendPeriod(line_, row);
    int indent = 0;
    if (!request_.onePage) {
        if (request_.variant == DailyVariant::Combined) {
            indent = static_cast<int>(std::lrint(context_.program.services().printers.PageWidth() * 0.05));
        } else {
            line_ += " In ";
            print::AppendUtf8(line_, FieldText(row.AssetName));
        }
    }
    context_.job.PrintSectionHeading(line_, indent);
}

void DailyReport::PrintBriefBody(const DailyRow& row) {
    const auto captioned = [](const char* caption, const engine::Field& field) {
        QByteArray cell(caption);
        print::AppendUtf8(cell, FieldText(field));
        return cell;
    };
    context_.job.PrintTableRow({FieldText(row.Organization), FieldText(row.EventType),
                                captioned("Storage: ", row.Storage), captioned("Ext. ", row.Extension),
                                captioned("Rm. Ext. ", row.DefaultExtension)});
}

void DailyReport::PrintFullBody(const DailyRow& row, const ReservationDetails* details) {
    print::PrintJob& job = context_.job;
    Step([&] {
        job.PrintTwoLabelValues(Translate(u"Organization"_s), FieldText(row.Organization), Translate(u"Space Type"_s),
                                FieldText(row.EventType));
    });
    Step([&] {
        job.PrintTwoLabelValues(Translate(u"Permanent"_s), FieldText(row.Permanent), Translate(u"Attendees"_s),
                                FieldText(row.Attendees));
    });
    Step([&] {
        details != nullptr ? PrintPerson(context_, *details->person)
                           : PrintPersonBlock(context_, row.LastName.ToText(), row.FirstName.ToText());
    });
    if (request_.includePhone) {
        PrintPhoneLines(row, details);
    }
}

void DailyReport::PrintPhoneLines(const DailyRow& row, const ReservationDetails* details) {
    const auto printPair = [this](const char* label1, const engine::Field& field1, const char* label2,
                                  const engine::Field& field2) {
        const FieldText value1(field1);
        const FieldText value2(field2);
        if (!value1.IsEmpty() || !value2.IsEmpty()) {
            context_.job.PrintTwoLabelValues(label1, value1, label2, value2);
        }
    };
    Step([&] { printPair("Jack", row.Jack, "Port", row.Port); });
    Step([&] { printPair("Default Extension", row.DefaultExtension, "Station Type", row.StationType); });
    Step([&] {
        if (const FieldText interface(row.SwitchInterface); !interface.IsEmpty()) {
            context_.job.PrintLabelValue("Switch Interface", interface);
        }
    });
    Step([&] {
        details != nullptr ? PrintGuestLocation(context_, details->guestLocation.get())
                           : PrintGuestExtension(context_, static_cast<qint32>(row.ID.ToInteger()));
    });
}

} // namespace

void PrintDailyReport(ReportContext& context, const DailyRequest& request) {
    Steps steps(context.program.services().errors, u"Service Administration"_s, u"Print Daily Report"_s, QString());
    ReportFrame frame(context, steps);
    if (frame.Start()) {
        DailyReport(context, steps, frame, request).Run();
    }
}

} // namespace velmora
