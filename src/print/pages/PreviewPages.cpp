#include "print/pages/PreviewPages.h"

#include "base/Translate.h"
#include "print/pages/PageWriter.h"
#include "print/pages/PrinterPages.h"

#include <utility>

namespace velmora::print {

namespace {

PageTarget ScreenTarget(const Printers& printers, const JobState& state) {
    PageTarget target = TargetOf(printers, state);
    target.pageLimit = 255;
    // Rules are drawn thinner on the screen than on paper.
    target.ruleDivisor = 5;
    return target;
}

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

std::unique_ptr<ReportWriter> PreviewPages::MakeWriter(JobState& state) {
    if (!state.PreviewMode) {
        return printer_.MakeWriter(state);
    }
    return std::make_unique<PreviewWriter>(state, services_, windows_, documentName_);
}

} // namespace velmora::print
