#include "platform/pages/Sheets.h"

#include <algorithm>
#include <cmath>

namespace velmora::pages {

namespace {

struct Extent {
    int top = 0;
    int bottom = 0;
};

Extent Reach(const Item& item) {
    return {std::min(item.y, item.y + item.height), std::max(item.y, item.y + item.height)};
}

// Where the sheet that begins at `start` ends, at most `room` below: above whatever would be cut through, unless that
// reaches up over half of the sheet.
int CutBelow(const Page& page, int start, int room) {
    int cut = start + room;
    for (bool moved = true; moved;) {
        moved = false;
        for (const Item& item : page.Items()) {
            const Extent extent = Reach(item);
            if (extent.top < cut && extent.bottom > cut && extent.top > start + room / 2) {
                cut = extent.top;
                moved = true;
            }
        }
    }
    return cut;
}

// Adds the part of an item between `start` and `cut`, moved up by `up`. Boxes and upright lines are divided, anything
// else goes whole to the sheet on which it begins.
void AddPart(Page& sheet, const Page& page, const Item& item, int start, int cut, int up) {
    const Extent extent = Reach(item);
    const bool begins = extent.top >= start && extent.top < cut;
    const bool divided = item.kind == Item::Kind::Box || (item.kind == Item::Kind::Line && item.width == 0);
    if (!begins && !(divided && extent.top < start && extent.bottom > start)) {
        return;
    }
    const int top = divided ? std::max(extent.top, start) : extent.top;
    const int bottom = divided ? std::min(extent.bottom, cut) : extent.bottom;
    const int pen = static_cast<int>(item.text);
    switch (item.kind) {
    case Item::Kind::Text:
        sheet.AddText(item.font, item.x, top - up, item.width, item.height, page.Text(item));
        break;
    case Item::Kind::Box:
        sheet.AddBox(item.x, top - up, item.width, bottom - top, item.fill, pen);
        break;
    case Item::Kind::Line:
        if (divided) {
            sheet.AddLine(item.x, top - up, item.x, bottom - up, pen);
        } else {
            sheet.AddLine(item.x, item.y - up, item.x + item.width, item.y + item.height - up, pen);
        }
        break;
    }
}

// Keeps the corner of the printable area where it is.
Placement Scaled(const PaperSize& paper, double scaleX, double scaleY) {
    return {scaleX, scaleY, paper.left * (1 - scaleX), paper.top * (1 - scaleY)};
}

void Cut(Document& result, const Page& page, const PaperSize& paper, double scale) {
    const int room = std::max(1, static_cast<int>(paper.PrintableHeight() / scale));
    const int end = page.Height() - paper.bottom;
    int start = paper.top;
    do {
        const int cut = start + room >= end ? std::max(end, page.Height()) : CutBelow(page, start, room);
        Page sheet(paper.width, paper.height);
        for (const Item& item : page.Items()) {
            // What stands in the upper margin belongs to the first sheet.
            AddPart(sheet, page, item, start == paper.top ? std::min(0, start) : start, cut, start - paper.top);
        }
        sheet.Shrink();
        sheet.Place(paper.width, paper.height, Scaled(paper, scale, scale));
        result.pages.push_back(std::move(sheet));
        start = cut;
    } while (start < end);
}

Document Laid(const Document& document, const PaperSize& paper, double longest) {
    Document result{document.name, document.fonts, {}};
    for (const Page& page : document.pages) {
        if (page.Width() <= paper.width && page.Height() <= paper.height) {
            result.pages.push_back(page);
            continue;
        }
        const double wide = page.Width() - paper.left - paper.right;
        const double scale = wide > paper.PrintableWidth() ? paper.PrintableWidth() / wide : 1;
        const double length = (page.Height() - paper.top - paper.bottom) * scale;
        if (length > paper.PrintableHeight() * longest) {
            Cut(result, page, paper, scale);
            continue;
        }
        Page sheet = page;
        sheet.Place(paper.width, paper.height,
                    Scaled(paper, scale, scale * std::min(1.0, paper.PrintableHeight() / length)));
        result.pages.push_back(std::move(sheet));
    }
    return result;
}

} // namespace

Document OnSheets(const Document& document, const PaperSize& paper) {
    return Laid(document, paper, 1.25);
}

Document CutIntoSheets(const Document& document, const PaperSize& paper) {
    return Laid(document, paper, 1);
}

Document ForPdf(const Document& document) {
    constexpr int margin = 720;
    PaperSize tallest{0, tallestPdfPage, 0, margin, 0, margin};
    for (const Page& page : document.pages) {
        tallest.width = std::max(tallest.width, page.Width());
    }
    return CutIntoSheets(document, tallest);
}

} // namespace velmora::pages
