#include "ops/windows/WindowProgress.h"

#include "ops/windows/frmProgress.h"

namespace velmora {

WindowProgress::WindowProgress() = default;
WindowProgress::~WindowProgress() = default;

void WindowProgress::Show(const QString& text, std::optional<double> percent) {
    if (window_ == nullptr) {
        if (text.isEmpty()) {
            return;
        }
        window_ = std::make_unique<frmProgress>();
    }
    window_->ShowStatus(text, percent);
}

void WindowProgress::Unload() {
    window_.reset();
}

} // namespace velmora
