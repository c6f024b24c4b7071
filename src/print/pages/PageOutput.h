#pragma once

#include "base/services/Printers.h"
#include "platform/pages/Sheets.h"
#include "platform/printers/DocumentPrinter.h"
#include "print/Delivery.h"

namespace velmora::print {

// A printer as it was when a document was begun: the user may choose another one before the document is done.
struct PageDestination {
    QString deviceName;
    bool toFile = false;
    // The paper held upright, in twips.
    int paperWidth = 0;
    int paperHeight = 0;

    static PageDestination Of(const Printers& printers);
};

// Takes finished documents to a printer, or as a PDF file to where the program's other report files go.
class PageOutput {
public:
    // Both outlive the object.
    PageOutput(printers::DocumentPrinter& printer, Delivery& delivery) : printer_(printer), delivery_(delivery) {}

    // On paper, pages that grew are handled as `tall` says; in a PDF file each stays one page. Throws Error, naming the
    // printer or the file, unless all of it went there.
    void Print(const pages::Document& document, const PageDestination& destination, pages::TallPages tall);

private:
    printers::DocumentPrinter& printer_;
    Delivery& delivery_;
};

} // namespace velmora::print
