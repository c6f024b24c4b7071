#include "print/windows/WindowPreviews.h"

#include "print/windows/frmPrintPreview.h"

namespace velmora::print {

void WindowPreviews::Open(PreviewReport report) {
    auto* window = new frmPrintPreview(services_, printer_, std::move(report));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

} // namespace velmora::print
