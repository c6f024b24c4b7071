#include "print/pages/PreviewPages.h"

#include "base/Translate.h"
#include "print/pages/PageWriter.h"
#include "print/pages/PrinterPages.h"

#include <utility>

namespace velmora::print {

namespace {

constexpr int pageLimit = 255;
// Rules are drawn thinner on the screen than on paper.
constexpr int ruleDivisor = 5;

// One report's refusals of a page beyond the limit.
class Refusals {
public:
    explicit Refusals(const Services& services) : services_(services) {}
    ~Refusals() { Clear(); }
    Refusals(const Refusals&) = delete;
    Refusals& operator=(const Refusals&) = delete;

    void Refuse() {
        const bool first = notice_.isEmpty();
        notice_ = Translate(QStringLiteral("Print Preview Not supported for Reports longer than 256 Pages"));
        if (first) {
            services_.dialogs.ShowMessage({notice_, CurrentProgram().Title(), Buttons::Ok, Icon::Exclamation});
        } else {
            told_ = true;
            services_.progress.Show(notice_, std::nullopt);
        }
    }
    // Takes the notice off the screen, so that it neither covers the preview nor makes the desk look busy.
    void Clear() {
        if (std::exchange(told_, false)) {
            services_.progress.Show({}, std::nullopt);
        }
    }
    const QString& Notice() const { return notice_; }

private:
    const Services& services_;
    QString notice_;
    // The notice stands in the status line.
    bool told_ = false;
};

} // namespace

std::unique_ptr<ReportWriter> PreviewPages::MakeWriter(JobState& state) {
    if (!state.PreviewMode) {
        return printer_.MakeWriter(state);
    }
    const auto refusals = std::make_shared<Refusals>(services_);
    PageTarget target;
    target.geometry = SurfaceOf(services_.printers.CurrentPage());
    target.font = FontOf(services_.printers.CurrentFont());
    target.pageLimit = pageLimit;
    target.ruleDivisor = ruleDivisor;
    target.refusePage = [refusals] { refusals->Refuse(); };
    target.deliver = [refusals, &windows = windows_](const pages::Document& document) {
        refusals->Clear();
        windows.Open({document, refusals->Notice()});
    };
    return std::make_unique<PageWriter>(state, std::move(target), documentName_);
}

} // namespace velmora::print
