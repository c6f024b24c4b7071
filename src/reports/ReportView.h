#pragma once

#include <QString>

namespace velmora {

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

// Shows a report's progress; more than 100 percent counts as 100, an empty text hides status line and bar.
void ShowReportProgress(ReportView& view, const QString& text, qint16 percent);

} // namespace velmora
