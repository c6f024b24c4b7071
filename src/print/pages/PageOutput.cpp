#include "print/pages/PageOutput.h"

#include "platform/pages/PdfFile.h"

#include <algorithm>

namespace velmora::print {

PageDestination PageDestination::Of(const Printers& printers) {
    const PrinterPage page = printers.CurrentPage();
    return {printers.CurrentDevice(), printers.PrintsToFile(), std::min(page.paperWidth, page.paperHeight),
            std::max(page.paperWidth, page.paperHeight)};
}

void PageOutput::Print(const pages::Document& document, const PageDestination& destination, pages::TallPages tall) {
    if (destination.toFile) {
        delivery_.SaveFile(PdfBytes(document), ReportFileKind::Pdf);
        return;
    }
    std::vector<pages::Sheet> sheets = PlanSheets(document, tall);
    FitOnPaper(sheets, destination.paperWidth, destination.paperHeight);
    printer_.Print(destination.deviceName,
                   {document.name, PdfBytes(document, sheets), destination.paperWidth, destination.paperHeight});
}

} // namespace velmora::print
