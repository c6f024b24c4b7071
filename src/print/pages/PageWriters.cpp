#include "print/pages/PageWriters.h"

#include "base/Translate.h"
#include "print/pages/PageWriter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmora::print {

namespace {

// The drawing surface of a printer's page.
PageGeometry SurfaceOf(const PrinterPage& page) {
    return {page.paperWidth, page.paperHeight, page.left,        page.top,
            page.width,      page.height,      page.twipsPerDot, page.twipsPerDot};
}

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

// The orientation that the document is to have whatever the printer's is.
std::optional<Orientation> OrientationOf(const JobState& state) {
    return state.pageForm ? std::optional(state.pageForm->orientation) : std::nullopt;
}

// The current printer's pages as the document takes them: its own page form, or what the printer is set to.
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

PageTarget ScreenTarget(const Printers& printers, const JobState& state) {
    PageTarget target = TargetOf(printers, state);
    target.pageLimit = 255;
    // Rules are drawn thinner on the screen than on paper.
    target.ruleDivisor = 5;
    return target;
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

class PreviewWriter : public PageWriter {
public:
    PreviewWriter(JobState& state, const Services& services, PreviewWindows& windows, const QString& documentName)
        : PageWriter(state, ScreenTarget(services.printers, state), documentName), services_(services),
          windows_(windows), orientation_(OrientationOf(state)) {}
    ~PreviewWriter() override { ClearNotice(); }
    PreviewWriter(const PreviewWriter&) = delete;
    PreviewWriter& operator=(const PreviewWriter&) = delete;

    void Deliver() override {
        ClearNotice();
        windows_.Open({Pages(), notice_, orientation_});
    }

private:
    void RefusePage() override {
        const bool first = notice_.isEmpty();
        notice_ = Translate(QStringLiteral("Print Preview Not supported for Reports longer than 256 Pages"));
        if (first) {
            services_.dialogs.ShowMessage({notice_, CurrentProgram().Title(), Buttons::Ok, Icon::Exclamation});
        } else {
            isShown_ = true;
            services_.progress.Show(notice_, std::nullopt);
        }
    }
    // Takes the notice off the screen, so that it neither covers the preview nor makes the desk look busy.
    void ClearNotice() {
        if (std::exchange(isShown_, false)) {
            services_.progress.Show({}, std::nullopt);
        }
    }

    const Services& services_;
    PreviewWindows& windows_;
    std::optional<Orientation> orientation_;
    QString notice_;
    // The notice stands in the status line.
    bool isShown_ = false;
};

} // namespace

pages::FontSpec FontOf(const PrinterFont& font) {
    return {pages::InstalledFamily(font.family), font.points, font.bold, font.italic, font.underline, font.strikeOut};
}

std::unique_ptr<ReportWriter> PageWriters::MakeWriter(JobState& state) {
    if (!state.PreviewMode) {
        return std::make_unique<PrinterWriter>(state, printers_, output_, documentName_);
    }
    if (windows_ == nullptr) {
        throw ProgramError(ErrorNumber::Unavailable,
                           QStringLiteral("This program has no preview. Choose the printer or a file."));
    }
    return std::make_unique<PreviewWriter>(state, *services_, *windows_, documentName_);
}

} // namespace velmora::print
