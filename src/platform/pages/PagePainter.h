#pragma once

#include "platform/pages/Page.h"

#include <QFont>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace velmora::pages {

// Replays pages of one document. Keeps the toolkit's fonts, so one painter serves all its pages.
class PagePainter {
public:
    explicit PagePainter(const Document& document);

    // Draws the page; the painter's coordinates must be twips of the page, its upper left corner at (0, 0). Of a page
    // that is shown in part, `visible` leaves out what lies wholly above or below it.
    void Draw(QPainter& painter, const Page& page, std::optional<QRectF> visible = std::nullopt) const;

private:
    void DrawItems(QPainter& painter, const Page& page, double top, double bottom) const;

    struct DrawnFont {
        QFont font;
        double ascent = 0;
    };
    std::vector<DrawnFont> fonts_;
};

} // namespace velmora::pages
