#pragma once

#include "base/services/Printers.h"
#include "platform/pages/Page.h"

#include <optional>

namespace velmora::print {

// A report as it is handed to the preview.
struct PreviewReport {
    pages::Document document;
    // What the reader must know of it, such as the page limit that it met; empty without.
    QString notice;
    // How the paper is held that it is printed on; as the printer is set without.
    std::optional<Orientation> orientation = {};
};

// Shows finished reports, each in a window of its own, which then belongs to the person at the desk.
class PreviewWindows {
public:
    virtual ~PreviewWindows() = default;
    virtual void Open(PreviewReport report) = 0;
};

} // namespace velmora::print
