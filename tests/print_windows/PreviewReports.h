#pragma once

#include "base/Error.h"
#include "platform/printers/PrintQueues.h"
#include "print/PrintJob.h"
#include "print/pages/PageOutput.h"
#include "print/pages/PageWriter.h"

namespace velmora::print {

// Letter paper with margins of a quarter inch.
inline PageGeometry LetterPaper() {
    return {12240, 15840, 360, 360, 11520, 15120};
}

// A printer's answer for the preview's tests: keeps what it is given, or fails.
class FakePagePrinter : public PagePrinter {
public:
    pages::PaperSize Paper(std::optional<Orientation>) const override { return paper; }
    bool Print(const pages::Document& document) override {
        if (failures > 0) {
            --failures;
            throw ProgramError(ErrorNumber::Unavailable, QStringLiteral("the queue is gone"));
        }
        if (cancelled) {
            return false;
        }
        printed.push_back(document);
        return true;
    }

    pages::PaperSize paper{12240, 15840, 360, 360, 360, 360};
    int failures = 0;
    // Whoever is asked for the file to print into names none.
    bool cancelled = false;
    std::vector<pages::Document> printed;
};

// Where reports end that are printed and not shown.
class FakeQueue : public printers::DocumentPrinter, public DocumentSink {
public:
    void Print(const QString&, const printers::QueueJob&) override { ++jobs; }
    void SendMail(const QByteArray&) override {}
    bool SaveFile(const QByteArray&, ReportFileKind) override { return true; }
    int jobs = 0;
};

// A report laid out by the engine itself. `layout` writes it; pages break where it says so.
inline pages::Document DrawReport(const std::function<void(PageWriter& writer)>& layout, qint16 leaderStyle = 0,
                                  PageGeometry paper = LetterPaper()) {
    JobState state;
    const int fifth = paper.width / 5;
    state.TabStops = {fifth, 2 * fifth, 3 * fifth, 4 * fifth};
    state.LeaderStyle = leaderStyle;
    state.SuppressPageBreaks = true;
    PageTarget target;
    target.geometry = paper;
    target.font = {QStringLiteral("Liberation Sans"), 10, false, false, false, false};
    target.ruleDivisor = 5;
    PageWriter writer(state, target, QStringLiteral("Starts"));
    layout(writer);
    return writer.Pages();
}

// What a daily list says of one reservation.
inline void PrintBlock(PageWriter& writer, int number) {
    writer.PrintTwoLabelValues("Name", QStringLiteral("Person %1, Alma").arg(number), "Organization",
                               number % 2 == 0 ? "Facilities East" : "Records and Archive", {});
    writer.PrintTwoLabelValues("Space Type", "Office", "Jack", QStringLiteral("J-%1").arg(4000 + number), Bold);
    writer.PrintLabelValue("Phone", QStringLiteral("555-0%1").arg(100 + number), GreyBox);
    writer.PrintWideLabelValue("Setup",
                               "Two tables along the window wall, twelve chairs, and the projector from the "
                               "store room; the table by the door stays.",
                               {});
    writer.PrintParagraph("The group brings its own screen. Please leave the connecting door to the next room unlocked "
                          "until noon, and tell the front desk when the keys are back.");
}

// The same under its heading.
inline void PrintEntry(PageWriter& writer, int number) {
    const QString heading = QStringLiteral("%1:%2 AM  Room B%3")
                                .arg(8 + number % 4)
                                .arg(number * 15 % 60, 2, 10, QLatin1Char('0'))
                                .arg(100 + number);
    writer.PrintSectionHeading(heading, 0);
    PrintBlock(writer, number);
}

// One page that grows with its blocks: without rules nothing breaks it.
inline pages::Document GrownPage(int blocks, qint16 leaderStyle = 0) {
    return DrawReport(
        [&](PageWriter& writer) {
            for (int i = 0; i < blocks; ++i) {
                PrintBlock(writer, i);
            }
        },
        leaderStyle);
}

// A daily list of that many pages with `entries` on each.
inline pages::Document DailyList(int pageCount, int entries = 5, qint16 leaderStyle = 0) {
    return DrawReport(
        [&](PageWriter& writer) {
            for (int page = 0; page < pageCount; ++page) {
                if (page > 0) {
                    writer.NewPage();
                }
                writer.PrintReportTitle("Starts", "Saturday, March 7, 2026", "Printed at: 3/7/2026 2:15 PM");
                for (int i = 0; i < entries; ++i) {
                    PrintEntry(writer, page * entries + i);
                }
            }
        },
        leaderStyle);
}

} // namespace velmora::print
