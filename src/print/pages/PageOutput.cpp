#include "print/pages/PageOutput.h"

#include "platform/pages/PdfFile.h"
#include "platform/printers/SystemPrinters.h"

#include <algorithm>

namespace velmora::print {

PrinterPage PageIn(const Printers& printers, std::optional<Orientation> orientation) {
    const PrinterPage page = printers.CurrentPage();
    const Orientation current = page.paperWidth > page.paperHeight ? Orientation::Landscape : Orientation::Portrait;
    return orientation.value_or(current) == current ? page : printers::Turned(page, Orientation::Landscape);
}

PageDestination PageDestination::Of(const Printers& printers, std::optional<Orientation> orientation) {
    const PrinterPage page = PageIn(printers, orientation);
    return {printers.CurrentDevice(), printers.PrintsToFile(),
            pages::PaperSize{page.paperWidth, page.paperHeight, page.left, page.top,
                             page.paperWidth - page.left - page.width, page.paperHeight - page.top - page.height}};
}

void PageOutput::PrintReport(const pages::Document& document, const PageDestination& destination) {
    pages::PaperSize paper = destination.paper;
    if (destination.toFile) {
        paper.height = pages::tallestPdfPage;
    }
    const bool fits = std::all_of(document.pages.begin(), document.pages.end(),
                                  [&](const pages::Page& page) { return page.Height() <= paper.height; });
    if (fits) {
        Send(document, destination);
    } else {
        Send(CutIntoSheets(document, paper), destination);
    }
}

pages::PaperSize PageOutput::Paper(std::optional<Orientation> orientation) const {
    return PageDestination::Of(printers_, orientation).paper;
}

bool PageOutput::Print(const pages::Document& document) {
    return Send(document, PageDestination::Of(printers_));
}

bool PageOutput::Send(const pages::Document& document, const PageDestination& destination) {
    const QByteArray pdf = PdfBytes(document);
    if (destination.toFile) {
        return sink_.SaveFile(pdf, ReportFileKind::Pdf);
    }
    const pages::PaperSize& paper = destination.paper;
    printer_.Print(destination.deviceName,
                   {document.name, pdf, std::min(paper.width, paper.height), std::max(paper.width, paper.height)});
    return true;
}

} // namespace velmora::print
