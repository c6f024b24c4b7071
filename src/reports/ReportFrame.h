#pragma once

#include "base/Steps.h"
#include "reports/ReportContext.h"

namespace velmora {

// What every printed report of the main window does around its rows: refuse a second report, prepare the printer and
// begin the job, show progress and let the user cancel before each row, and end the job.
//
//     Steps steps(errors, u"Service Administration"_s, u"Print ..."_s, QString());
//     ReportFrame frame(context, steps);
//     if (!frame.Start()) { return; }
//     frame.PreparePrinter();
//     ...
//     while (more rows && frame.BeforeRow(*rows)) { ... }
//     frame.End();
//
// Failures are reported through `steps`. However the report is left, the window is back to idle when the frame goes;
// a job that was not ended is then forgotten, not delivered.
class ReportFrame {
public:
    ReportFrame(ReportContext& context, Steps& steps)
        : context_(context), steps_(steps), target_(context.job.Choice()) {}
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

    // Shows how far the set has been read and handles pending events. False when the user has cancelled.
    bool BeforeRow(const engine::Recordset& rows);
    // Says that all records are read and the report is being sent.
    void ShowSending();

    // Ends and delivers the job and returns the window to idle.
    void End();

private:
    void ReturnToIdle();

    ReportContext& context_;
    Steps& steps_;
    // What was chosen when the report was asked for. Asking for another one meanwhile changes the choice, not the
    // report that runs.
    const print::TargetChoice target_;
    bool running_ = false;
};

} // namespace velmora
