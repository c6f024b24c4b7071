#include "print/pages/PrinterPages.h"

#include "print/pages/PageWriter.h"

namespace velmora::print {

PageGeometry SurfaceOf(const PrinterPage& page) {
    return {page.paperWidth, page.paperHeight, page.left,        page.top,
            page.width,      page.height,      page.twipsPerDot, page.twipsPerDot};
}

pages::FontSpec FontOf(const PrinterFont& font) {
    return {pages::InstalledFamily(font.family), font.points, font.bold, font.italic, font.underline, font.strikeOut};
}

std::unique_ptr<ReportWriter> PrinterPages::MakeWriter(JobState& state) {
    if (state.PreviewMode) {
        throw ProgramError(ErrorNumber::Unavailable,
                           QStringLiteral("This program has no preview. Choose the printer or a file."));
    }
    PageTarget target;
    target.geometry = SurfaceOf(printers_.CurrentPage());
    target.font = FontOf(printers_.CurrentFont());
    target.deliver = [&output = output_,
                      destination = PageDestination::Of(printers_)](const pages::Document& document) {
        output.PrintReport(document, destination);
    };
    return std::make_unique<PageWriter>(state, std::move(target), documentName_);
}

} // namespace velmora::print
