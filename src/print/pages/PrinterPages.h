#pragma once

#include "print/PrintServices.h"
#include "print/pages/PageOutput.h"
#include "print/pages/PageWriter.h"

namespace velmora::print {

// The drawing surface of a printer's page.
PageGeometry SurfaceOf(const PrinterPage& page);

// The printer's font as pages use it: the default family where the printer's own is not installed. Throws Error where
// that is missing too.
pages::FontSpec FontOf(const PrinterFont& font);

// The orientation that the document is to have whatever the printer's is.
std::optional<Orientation> OrientationOf(const JobState& state);

// The current printer's pages as the document takes them: its own page form, or what the printer is set to. Throws
// Error as FontOf does.
PageTarget TargetOf(const Printers& printers, const JobState& state);

// Makes the writers of reports that are printed on the current printer.
class PrinterPages : public PageWriterFactory {
public:
    // All of it outlives the object. Documents are called by the report's title behind `documentName`.
    PrinterPages(const Printers& printers, PageOutput& output, QString documentName)
        : printers_(printers), output_(output), documentName_(std::move(documentName)) {}

    // Throws Error for a preview, which needs windows.
    std::unique_ptr<ReportWriter> MakeWriter(JobState& state) override;

private:
    const Printers& printers_;
    PageOutput& output_;
    QString documentName_;
};

} // namespace velmora::print
