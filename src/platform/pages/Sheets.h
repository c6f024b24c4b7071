#pragma once

#include "platform/pages/Page.h"

namespace velmora::pages {

// A sheet of paper and the margins that a printer does not reach, in twips.
struct PaperSize {
    int width = 0;
    int height = 0;
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int PrintableWidth() const { return width - left - right; }
    int PrintableHeight() const { return height - top - bottom; }
};

// The document as it is put on sheets of that paper. A page that fits stays as it is. One whose content is longer than
// the printable height by at most a quarter is stretched onto one sheet; a longer one keeps its size and is cut over
// several. A page that is too wide is made narrower to fit.
Document OnSheets(const Document& document, const PaperSize& paper);

// The same, but whatever is too long is cut, however little it may be: for a strip of paper without pages.
Document CutIntoSheets(const Document& document, const PaperSize& paper);

// PDF knows no page beyond 200 inches.
constexpr int tallestPdfPage = 288000;

// The document with every page at its own size, but none beyond what PDF knows: a longer one is cut.
Document ForPdf(const Document& document);

} // namespace velmora::pages
