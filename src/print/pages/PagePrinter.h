#pragma once

#include "base/services/Printers.h"
#include "platform/pages/Sheets.h"

#include <optional>

namespace velmora::print {

// Prints pages that are finished, on the printer that is the current one at the time of the call.
class PagePrinter {
public:
    virtual ~PagePrinter() = default;
    // The current paper, held in that orientation, or else in the current one.
    virtual pages::PaperSize Paper(std::optional<Orientation> orientation) const = 0;
    // Prints the pages in their order as one printer document. They fit the paper. Throws Error unless the printer has
    // taken the whole document. False when the user was asked for a file to print into and gave none.
    virtual bool Print(const pages::Document& document) = 0;
};

} // namespace velmora::print
