#include "print/pages/PrinterPages.h"

#include "print/pages/PageWriter.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

namespace {

PageGeometry WithMargins(const PrinterPage& page, double inches) {
    constexpr int twipsPerInch = 1440;
    // On a label's paper margins must not leave less than half of it.
    const int margin =
        std::min({static_cast<int>(std::lround(inches * twipsPerInch)), page.paperWidth / 4, page.paperHeight / 4});
    PageGeometry geometry = SurfaceOf(page);
    geometry.left = std::max(page.left, margin);
    geometry.top = std::max(page.top, margin);
    geometry.width = page.paperWidth - geometry.left - std::max(page.paperWidth - page.left - page.width, margin);
    geometry.height = page.paperHeight - geometry.top - std::max(page.paperHeight - page.top - page.height, margin);
    // Whatever the printer: such documents give lengths in twips.
    geometry.twipsPerDot = 1;
    geometry.twipsPerPen = 1;
    return geometry;
}

class PrinterWriter : public PageWriter {
public:
    PrinterWriter(JobState& state, const Printers& printers, PageOutput& output, const QString& documentName)
        : PageWriter(state, TargetOf(printers, state), documentName), output_(output),
          destination_(PageDestination::Of(printers, OrientationOf(state))) {}
    void Deliver() override { output_.PrintReport(Pages(), destination_); }

private:
    PageOutput& output_;
    PageDestination destination_;
};

} // namespace

PageGeometry SurfaceOf(const PrinterPage& page) {
    return {page.paperWidth, page.paperHeight, page.left,        page.top,
            page.width,      page.height,      page.twipsPerDot, page.twipsPerDot};
}

pages::FontSpec FontOf(const PrinterFont& font) {
    return {pages::InstalledFamily(font.family), font.points, font.bold, font.italic, font.underline, font.strikeOut};
}

std::optional<Orientation> OrientationOf(const JobState& state) {
    return state.pageForm ? std::optional(state.pageForm->orientation) : std::nullopt;
}

PageTarget TargetOf(const Printers& printers, const JobState& state) {
    const PrinterPage page = PageIn(printers, OrientationOf(state));
    const PrinterFont font = printers.CurrentFont();
    PageTarget target{SurfaceOf(page), {}};
    if (state.pageForm) {
        target.geometry = WithMargins(page, state.pageForm->marginInches);
        target.font.family = pages::InstalledFamily(font.family);
        target.font.points = state.pageForm->fontPoints;
    } else {
        target.font = FontOf(font);
    }
    return target;
}

std::unique_ptr<ReportWriter> PrinterPages::MakeWriter(JobState& state) {
    if (state.PreviewMode) {
        throw ProgramError(ErrorNumber::Unavailable,
                           QStringLiteral("This program has no preview. Choose the printer or a file."));
    }
    return std::make_unique<PrinterWriter>(state, printers_, output_, documentName_);
}

} // namespace velmora::print
