#include "platform/pages/Sheets.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

namespace velmora::pages {

namespace {

struct Extent {
    int top = 0;
    int bottom = 0;
};

Extent Reach(const Item& item) {
    return {std::min(item.y, item.y + item.height), std::max(item.y, item.y + item.height)};
}

bool IsDivided(const Item& item) {
    return item.kind == Item::Kind::Box || (item.kind == Item::Kind::Line && item.width == 0);
}

// Adds the part of an item between `start` and `cut`, moved up by `up`. Boxes and upright lines are divided, anything
// else goes whole to the sheet on which it begins.
void AddPart(Page& sheet, const Page& page, const Item& item, int start, int cut, int up) {
    const Extent extent = Reach(item);
    const bool begins = extent.top >= start && extent.top < cut;
    const bool divided = IsDivided(item);
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

// The items of a long page from its top down. Each sheet looks at its own items alone: a report twice as long takes
// twice the time.
class Strip {
public:
    explicit Strip(const Page& page) : page_(page), byTop_(page.Items().size()) {
        std::iota(byTop_.begin(), byTop_.end(), size_t{0});
        std::stable_sort(byTop_.begin(), byTop_.end(), [this](size_t a, size_t b) { return Top(a) < Top(b); });
    }

    // Where the sheet that begins at `start` ends, at most `room` below: above whatever would be cut through, unless
    // that reaches up over half of the sheet.
    int CutBelow(int start, int room) const {
        int cut = start + room;
        for (bool moved = true; moved;) {
            moved = false;
            for (size_t i = FirstFrom(start + room / 2 + 1); i < byTop_.size() && Top(byTop_[i]) < cut; ++i) {
                const Extent extent = Reach(page_.Items()[byTop_[i]]);
                if (extent.bottom > cut) {
                    cut = extent.top;
                    moved = true;
                }
            }
        }
        return cut;
    }

    // Adds what stands between `start` and `cut` to a sheet, moved up by `up`. The sheets are filled from the top down.
    void Fill(Page& sheet, int start, int cut, int up) {
        std::vector<size_t> chosen = std::exchange(reachingOn_, {});
        for (; next_ < byTop_.size() && Top(byTop_[next_]) < cut; ++next_) {
            chosen.push_back(byTop_[next_]);
        }
        // As they were drawn: what lies over another stays over it.
        std::sort(chosen.begin(), chosen.end());
        for (const size_t index : chosen) {
            const Item& item = page_.Items()[index];
            AddPart(sheet, page_, item, start, cut, up);
            if (IsDivided(item) && Reach(item).bottom > cut) {
                reachingOn_.push_back(index);
            }
        }
    }

private:
    int Top(size_t index) const { return Reach(page_.Items()[index]).top; }
    size_t FirstFrom(int top) const {
        const auto found = std::lower_bound(byTop_.begin(), byTop_.end(), top,
                                            [this](size_t index, int wanted) { return Top(index) < wanted; });
        return static_cast<size_t>(found - byTop_.begin());
    }

    const Page& page_;
    std::vector<size_t> byTop_;
    size_t next_ = 0;
    // Divided items that go on on the next sheet.
    std::vector<size_t> reachingOn_;
};

// Keeps the corner of the printable area where it is.
Placement Scaled(const PaperSize& paper, double scaleX, double scaleY) {
    return {scaleX, scaleY, paper.left * (1 - scaleX), paper.top * (1 - scaleY)};
}

void Cut(Document& result, const Page& page, const PaperSize& paper, double scale) {
    const int room = std::max(1, static_cast<int>(paper.PrintableHeight() / scale));
    const int end = page.Height() - paper.bottom;
    int start = paper.top;
    Strip strip(page);
    do {
        const int cut = start + room >= end ? std::max(end, page.Height()) : strip.CutBelow(start, room);
        Page sheet(paper.width, paper.height);
        // What stands in the upper margin belongs to the first sheet.
        strip.Fill(sheet, start == paper.top ? std::min(0, start) : start, cut, start - paper.top);
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
