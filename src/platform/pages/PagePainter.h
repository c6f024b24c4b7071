#pragma once

#include "platform/pages/Page.h"
#include "platform/pages/Sheets.h"

#include <QFont>

#include <vector>

class QPainter;

namespace velmora::pages {

// Replays pages of one document. Keeps the toolkit's fonts, so one painter serves all its pages.
class PagePainter {
public:
    explicit PagePainter(const Document& document);

    // Draws the page; the painter's coordinates must be twips of the page, its upper left corner at (0, 0).
    void Draw(QPainter& painter, const Page& page) const;
    // Draws on a sheet; the painter's coordinates must be twips of the sheet. The painter's own state stays as it was.
    void DrawSheet(QPainter& painter, const Document& document, const Sheet& sheet) const;

private:
    // Draws what stands at least partly between the two heights.
    void DrawBand(QPainter& painter, const Page& page, int top, int bottom) const;

    struct DrawnFont {
        QFont font;
        double ascent = 0;
    };
    std::vector<DrawnFont> fonts_;
};

} // namespace velmora::pages
