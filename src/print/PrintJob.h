#pragma once

#include "print/PrintServices.h"

#include <array>
#include <initializer_list>
#include <memory>
#include <optional>

namespace velmora::print {

// The print job through which every report is written. There is one report open at a time; a report begun while
// another is open takes its place. Without an open report every layout operation does nothing.
class PrintJob {
public:
    explicit PrintJob(PrintServices services);

    // The destination of the next report, by its number: 1 preview, 2 mail, 3 text file, 4 HTML file, anything else the
    // printer. A report that is open keeps its own destination.
    void SetOutputTarget(qint16 target);
    void SetPreviewMode(bool on) { choice_.PreviewMode = on; }
    // Chooses what was chosen before, as Choice told it.
    void Restore(const TargetChoice& choice) { choice_ = choice; }

    // Opens a report on the chosen target. Without the argument, page breaks are suppressed for the preview alone.
    // Throws Error when the target is one that this program does not have.
    void BeginReport(std::optional<bool> suppressPageBreaks = std::nullopt);
    // Finishes the open report and delivers it. Its failures are reported, not thrown.
    void EndReport();
    // Forgets the open report; nothing is delivered.
    void AbandonReport();

    // Tab stops at fifths of the width.
    void ResetTabStops();
    // Tab stops at fractions of the width, as many as a table needs; further ones stay where they are.
    void SetTabStops(std::span<const double> fractions);
    void SetTabStops(double f1, double f2, double f3, double f4) { SetTabStops(std::array{f1, f2, f3, f4}); }
    // The same in twips.
    void PlaceTabStops(std::span<const int> positions);
    // How wide the open report shows a text, in twips; 0 on targets without pages, and without an open report.
    int TextWidth(Text text) const { return writer_->TextWidth(text); }
    void LoadPrintAttributes() { state_.attributes.Load(services_.attributes); }
    qint16 LookupPrintAttribute(const QString& caption) const { return state_.attributes.Lookup(caption); }

    void NewPage() { writer_->NewPage(); }
    void EnsureRoom(qint16 lines) { writer_->EnsureRoom(lines); }
    void AddVerticalSpace(qint16 dots) { writer_->AddVerticalSpace(dots); }
    void PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) {
        writer_->PrintRule(width, spaceAbove, spaceBelow);
    }
    void PrintReportTitle(Text title, Text subtitle, Text secondLine) {
        writer_->PrintReportTitle(title, subtitle, secondLine);
    }
    void PrintSectionHeading(Text text, int x = 0) { writer_->PrintSectionHeading(text, x); }
    void PrintParagraph(Text text) { writer_->PrintParagraph(text); }
    void PrintLabelValue(Text label, Text value, std::optional<qint16> style = std::nullopt) {
        writer_->PrintLabelValue(label, value, style);
    }
    void PrintWideLabelValue(Text label, Text value, std::optional<qint16> style = std::nullopt) {
        writer_->PrintWideLabelValue(label, value, style);
    }
    void PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2,
                             std::optional<qint16> style = std::nullopt) {
        writer_->PrintTwoLabelValues(label1, value1, label2, value2, style);
    }
    void PrintTableRow(std::span<const Text> cells, RowStyle style = RowStyle::Wrapped) {
        writer_->PrintTableRow(cells, style);
    }
    void PrintTableRow(std::initializer_list<Text> cells, RowStyle style = RowStyle::Wrapped) {
        writer_->PrintTableRow({cells.begin(), cells.size()}, style);
    }

    // What the next report will use.
    const TargetChoice& Choice() const { return choice_; }
    // The report that is open, or the last one.
    const JobState& State() const { return state_; }

private:
    PrintServices services_;
    TargetChoice choice_;
    JobState state_;
    std::unique_ptr<ReportWriter> writer_;
};

} // namespace velmora::print
