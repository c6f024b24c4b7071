#pragma once

#include "base/services/Printers.h"
#include "platform/pages/Page.h"
#include "platform/printers/DocumentPrinter.h"
#include "print/DocumentSink.h"
#include "print/pages/PagePrinter.h"

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

} // namespace velmora::print
