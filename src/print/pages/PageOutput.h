#pragma once

#include "base/services/Printers.h"
#include "platform/pages/Sheets.h"
#include "platform/printers/PrintQueues.h"
#include "print/ReportFile.h"

#include <optional>

namespace velmora::print {

// A printer as it was when a document was begun: the user may choose another one before the document is done.
struct PageDestination {
    QString deviceName;
    bool toFile = false;
    pages::PaperSize paper;

    // In that orientation, or else in the current one.
    static PageDestination Of(const Printers& printers, std::optional<Orientation> orientation = {});
};

// The current printer's page held in that orientation, or else as it is.
PrinterPage PageIn(const Printers& printers, std::optional<Orientation> orientation);

// Prints pages that are finished, on the printer that is the current one at the time of the call.
class PagePrinter {
public:
    virtual ~PagePrinter() = default;
    // The current paper, held in that orientation, or else in the current one.
    virtual pages::PaperSize Paper(std::optional<Orientation> orientation) const = 0;
    // Prints the pages in their order as one printer document. They fit the paper. Throws Error unless the printer has
    // taken the whole document. False when the user was asked for a file to print into and gave none.
    virtual bool Print(const pages::Document& document) = 0;
};

// Takes finished documents to a printer, or as a PDF file to where the program's other report files go.
class PageOutput : public PagePrinter {
public:
    // All of it outlives the object.
    PageOutput(const Printers& printers, printers::DocumentPrinter& printer, DocumentSink& sink)
        : printers_(printers), printer_(printer), sink_(sink) {}

    // A report as it was drawn for the destination. A page that grew is cut across sheets of paper at true size; in a
    // PDF file it stays one page. Throws Error, naming the printer or the file, unless all of it went there.
    void PrintReport(const pages::Document& document, const PageDestination& destination);

    pages::PaperSize Paper(std::optional<Orientation> orientation) const override;
    bool Print(const pages::Document& document) override;

private:
    bool Send(const pages::Document& document, const PageDestination& destination);

    const Printers& printers_;
    printers::DocumentPrinter& printer_;
    DocumentSink& sink_;
};

// A report as it is handed to the preview.
struct PreviewReport {
    pages::Document document;
    // What the reader must know of it, such as the page limit that it met; empty without.
    QString notice;
    // How the paper is held that it is printed on; as the printer is set without.
    std::optional<Orientation> orientation = {};
};

// Shows finished reports, each in a window of its own, which then belongs to the person at the desk.
class PreviewWindows {
public:
    virtual ~PreviewWindows() = default;
    virtual void Open(PreviewReport report) = 0;
};

} // namespace velmora::print
