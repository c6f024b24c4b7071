#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintJob.h"
#include "reports/Requests.h"

namespace velmora {

// What a running report shares with whoever shows it and may stop it.
struct ReportRun {
    bool ReportRunning = false;
    // The user asked the running report to stop. A report looks at it before each row, and clears it at its end.
    bool CancelRequested = false;
    // The detail blocks print telephone information.
    bool IncludePhoneInfo = false;
    // The printer that the last report was made for.
    QString SelectedPrinterName;
};

// What a running report shows in the main window.
class ReportView {
public:
    virtual ~ReportView() = default;
    // The button that cancels the running report and otherwise closes the program.
    virtual void SetCloseCaption(const QString& caption) = 0;
    // Status line and progress bar, painted at once; `percent` is at most 100.
    virtual void ShowProgress(const QString& text, int percent) = 0;
    virtual void HideProgress() = 0;
};

// What a report routine works with.
struct ReportContext {
    const Program& program;
    ReportRun& run;
    const Delivery& delivery;
    ReportView& view;
    engine::Database& database;
    print::PrintJob& job;
};

} // namespace velmora
