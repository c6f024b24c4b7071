#pragma once

#include "base/Program.h"
#include "print/pages/PageOutput.h"

namespace velmora::print {

// Opens a preview window for each report. The window is shown beside all others, and is gone when its user closes it.
// Services and printer outlive the windows.
class WindowPreviews : public PreviewWindows {
public:
    WindowPreviews(const Services& services, PagePrinter& printer) : services_(services), printer_(printer) {}
    void Open(PreviewReport report) override;

private:
    const Services& services_;
    PagePrinter& printer_;
};

} // namespace velmora::print
