#include "layouts/LayoutOutput.h"

#include "layouts/document/HtmlDocument.h"
#include "layouts/document/PagesDocument.h"
#include "layouts/document/TextDocument.h"
#include "platform/printers/Paper.h"

namespace velmora::layouts {

namespace {

pages::PaperSize PaperOf(const PrinterPage& page) {
    return {page.paperWidth,
            page.paperHeight,
            page.left,
            page.top,
            page.paperWidth - page.left - page.width,
            page.paperHeight - page.top - page.height};
}

} // namespace

void TextOutput::Deliver(const Layout& layout, const WriteDocument& write) {
    if (kind_ == Kind::Html) {
        HtmlDocument html(layout, services_.localeText);
        write(html);
        delivery_.SaveFile(html.Bytes(), print::ReportFileKind::Html);
        return;
    }
    TextDocument text(layout, services_.localeText);
    write(text);
    if (kind_ == Kind::Mail) {
        delivery_.SendMail(text.Bytes());
    } else {
        delivery_.SaveFile(text.Bytes(), print::ReportFileKind::PlainText);
    }
}

PrinterPage PageIn(const Printers& printers, Orientation orientation) {
    const PrinterPage page = printers.CurrentPage();
    const bool isLandscape = page.paperWidth > page.paperHeight;
    return isLandscape == (orientation == Orientation::Landscape) ? page
                                                                  : printers::Turned(page, Orientation::Landscape);
}

void PagesOutput::Deliver(const Layout& layout, const WriteDocument& write) {
    const Orientation orientation = orientation_.value_or(layout.orientation);
    const Printers& printers = services_.printers;
    PagesDocument document(layout, services_.localeText, PageIn(printers, orientation), printers.CurrentFont().family,
                           documentName_);
    write(document);
    DeliverPages(document.Pages(), orientation);
}

void PrinterOutput::DeliverPages(const pages::Document& document, Orientation orientation) {
    print::PageDestination destination = print::PageDestination::Of(printers_);
    destination.paper = PaperOf(PageIn(printers_, orientation));
    output_.PrintReport(document, destination);
}

pages::PaperSize OrientedPrinter::Paper() const {
    return PaperOf(PageIn(printers_, orientation_));
}

void PreviewOutput::DeliverPages(const pages::Document& document, Orientation orientation) {
    (orientation == Orientation::Portrait ? portrait_ : landscape_).Open({document, {}});
}

} // namespace velmora::layouts
