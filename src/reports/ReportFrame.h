#pragma once

#include "base/Steps.h"
#include "reports/Gather.h"
#include "reports/ReportContext.h"

namespace velmora {

// Shows a report's progress; more than 100 percent counts as 100, an empty text hides status line and bar.
void ShowReportProgress(ReportView& view, const QString& text, qint16 percent);

// Makes the installed printer of that device name the current one. Without one the current printer stays as it is.
// Throws Error when the print system fails.
void SelectPrinter(Printers& printers, const QString& deviceName);

// What every printed report of the main window does around its rows: refuse a second report, prepare the printer and
// begin the job, show progress and let the user cancel before each record, and end the job.
//
//     ReportFrame frame(context, u"Print ..."_s);
//     if (!frame.Start()) { return; }
//     frame.PreparePrinter();
//     const auto rows = Gather...(request, frame.Gather());
//     frame.ShowSending(rows);
//     ... print the rows ...
//     frame.End(rows, u"Cancelled after %1 of %2 ..."_s);
//
// What can fail is a step: preparing, reading and delivering, but no layout operation, which only adds to the job.
// Failures are reported with module "Service Administration" and the procedure. However the report is left, the window
// is back to idle when the frame goes; a job that was not ended is then forgotten, not delivered.
class ReportFrame {
public:
    ReportFrame(ReportContext& context, const QString& procedure);
    ~ReportFrame();
    ReportFrame(const ReportFrame&) = delete;
    ReportFrame& operator=(const ReportFrame&) = delete;

    // False when another report is running, which the user was told; nothing else may be called then.
    bool Start();
    // The two halves of Start, for a report that prepares the printer before it shows that it runs.
    bool Admit();
    void ShowRunning();

    // Gives the printer the orientation of the delivery, portrait for none.
    void SetOrientation();
    // Chooses printer, font and orientation, and begins the job; a continuous report only begins it.
    void PreparePrinter();

    // Runs a statement that can fail; false when its failure was ignored.
    template <typename Function>
    bool Step(Function&& statement) {
        return steps_.Step({}, std::forward<Function>(statement));
    }

    // The third line of the report's title: the caption, translated, the moment at which it is printed, and the phrase
    // that names its days: "Printed at 3/5/2026 2:15 PM for 3/5/2026".
    QString PrintedAt(const QString& caption, const std::optional<ReportDays>& days) const;
    // What the rows are gathered with: before each record it shows how far they were read and handles pending events.
    Gathering Gather();
    // Says that the report is being sent, unless it was cancelled.
    void ShowSending(const GatheredRecords& records);

    // Ends and delivers the job and returns the window to idle. The last paragraph of a report that was cancelled says
    // after how many of how many records: `notice`, in English, with "%1" and "%2" for the two numbers.
    void End(const GatheredRecords& records, const QString& notice);

private:
    void ReturnToIdle();

    ReportContext& context_;
    Steps steps_;
    // What was chosen when the report was asked for. Asking for another one meanwhile changes the choice, not the
    // report that runs.
    const print::TargetChoice target_;
    bool running_ = false;
};

} // namespace velmora
