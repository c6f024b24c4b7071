#pragma once

#include <QString>

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

} // namespace velmora
