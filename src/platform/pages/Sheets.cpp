#include "platform/pages/Sheets.h"

#include <algorithm>
#include <cmath>

namespace velmora::pages {

namespace {

// PDF knows no page beyond 200 inches.
constexpr int tallestSheet = 288000;

bool Straddles(const Item& item, int y) {
    return item.y < y && item.y + item.height > y;
}

// The lowest place above `limit` and below `from` that goes through no item that `counts`, or none.
template <typename Counts>
std::optional<int> Gap(const Page& page, int from, int limit, Counts counts) {
    int y = limit;
    bool moved = true;
    while (moved) {
        moved = false;
        for (const Item& item : page.Items()) {
            if (counts(item) && Straddles(item, y)) {
                y = item.y;
                moved = true;
            }
        }
        if (y <= from) {
            return std::nullopt;
        }
    }
    return y;
}

int CutPlace(const Page& page, int from, int limit) {
    // Boxes are kept whole where that leaves no sheet nearly empty, texts wherever they fit on a sheet at all.
    const int half = from + (limit - from) / 2;
    if (const auto place = Gap(page, half, limit, [](const Item&) { return true; })) {
        return *place;
    }
    const auto isText = [](const Item& item) { return item.kind == Item::Kind::Text; };
    return Gap(page, from, limit, isText).value_or(limit);
}

// Cuts the page into sheets of the given height.
void AddCut(std::vector<Sheet>& sheets, size_t index, const Page& page, int sheetHeight) {
    const int capacity = sheetHeight - page.TopMargin() - page.BottomMargin();
    int top = page.TopMargin();
    while (page.Height() - page.BottomMargin() - top > capacity) {
        const int bottom = CutPlace(page, top, top + capacity);
        sheets.push_back({index, page.Width(), sheetHeight, top, bottom, 1, 0, double(page.TopMargin())});
        top = bottom;
    }
    sheets.push_back({index, page.Width(), sheetHeight, top, page.Height(), 1, 0, double(page.TopMargin())});
}

} // namespace

std::vector<Sheet> PlanSheets(const Document& document, TallPages tall) {
    std::vector<Sheet> sheets;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        const Page& page = document.pages[i];
        const bool kept = tall == TallPages::Keep && page.Height() <= tallestSheet;
        if (kept || page.Height() <= page.SheetHeight()) {
            sheets.push_back({i, page.Width(), page.Height(), 0, page.Height()});
        } else if (tall == TallPages::Shrink && page.Height() <= page.SheetHeight() * 5 / 4) {
            const double scale = double(page.SheetHeight()) / page.Height();
            sheets.push_back(
                {i, page.Width(), page.SheetHeight(), 0, page.Height(), scale, page.Width() * (1 - scale) / 2, 0});
        } else {
            AddCut(sheets, i, page, tall == TallPages::Keep ? tallestSheet : page.SheetHeight());
        }
    }
    return sheets;
}

void FitOnPaper(std::vector<Sheet>& sheets, int paperWidth, int paperHeight) {
    // Sizes of one paper differ by roundings.
    constexpr int same = 30;
    for (Sheet& sheet : sheets) {
        const bool turned = sheet.paperWidth > sheet.paperHeight;
        const int width = turned ? paperHeight : paperWidth;
        const int height = turned ? paperWidth : paperHeight;
        if (std::abs(width - sheet.paperWidth) <= same && std::abs(height - sheet.paperHeight) <= same) {
            continue;
        }
        const double fit = std::min(double(width) / sheet.paperWidth, double(height) / sheet.paperHeight);
        sheet.left = sheet.left * fit + (width - sheet.paperWidth * fit) / 2;
        sheet.offset = sheet.offset * fit + (height - sheet.paperHeight * fit) / 2;
        sheet.scale *= fit;
        sheet.paperWidth = width;
        sheet.paperHeight = height;
    }
}

} // namespace velmora::pages
