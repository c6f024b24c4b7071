#pragma once

#include "print/PrintServices.h"
#include "print/pages/PageOutput.h"
#include "print/pages/PageSurface.h"

namespace velmora::print {

// The printer's font as pages use it: the default family where the printer's own is not installed. Throws Error where
// that is missing too.
pages::FontSpec FontOf(const PrinterFont& font);

// Makes the writers of pages: for the current printer, and for previews where the program has windows for them. All
// that is given outlives the object and the writers.
class PageWriters : public PageWriterFactory {
public:
    // Documents are called by their title behind `documentName`.
    PageWriters(const Printers& printers, PageOutput& output, QString documentName)
        : printers_(printers), output_(output), documentName_(std::move(documentName)) {}
    // A preview of a report has at most 255 pages, of the current printer's paper and font. Its first attempt to go
    // beyond the limit is told in a message box, each further one in the status line alone: a report may make one with
    // every row. The pages stay, and what follows is drawn on the last of them.
    PageWriters(const Services& services, PageOutput& output, PreviewWindows& windows, QString documentName)
        : printers_(services.printers), output_(output), documentName_(std::move(documentName)), services_(&services),
          windows_(&windows) {}

    // Throws Error for a preview where there are no windows.
    std::unique_ptr<ReportWriter> MakeWriter(JobState& state) override;

private:
    const Printers& printers_;
    PageOutput& output_;
    QString documentName_;
    // Null in a program without windows.
    const Services* services_ = nullptr;
    PreviewWindows* windows_ = nullptr;
};

} // namespace velmora::print
