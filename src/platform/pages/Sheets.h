#pragma once

#include "platform/pages/Page.h"

#include <vector>

namespace velmora::pages {

// What becomes of a page that grew beyond its paper.
enum class TallPages {
    // One sheet as long as the page, up to the 200 inches that a PDF page can have.
    Keep,
    // As many sheets as it takes at true size.
    Cut,
    // One sheet, made smaller, for a page grown by at most a quarter; a longer one is cut.
    Shrink,
};

// A part of a page on its sheet. Lengths are twips.
struct Sheet {
    size_t page = 0;
    int paperWidth = 0;
    int paperHeight = 0;
    // What begins on the page from `top` to above `bottom` is drawn, and nothing else.
    int top = 0;
    int bottom = 0;
    // A point (x, y) of the page stands on the sheet at (left + x * scale, offset + (y - top) * scale).
    double scale = 1;
    double left = 0;
    double offset = 0;
};

// The document's pages in order, each on paper of its own size. A page is cut between lines of text where it has a gap.
std::vector<Sheet> PlanSheets(const Document& document, TallPages tall);

// Puts sheets on other paper, given upright and turned as each sheet is: scaled to fit and centred. Sheets of that size
// stay as they are.
void FitOnPaper(std::vector<Sheet>& sheets, int paperWidth, int paperHeight);

} // namespace velmora::pages
