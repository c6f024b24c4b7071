#pragma once

#include "platform/pages/Page.h"

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

private:
    struct DrawnFont {
        QFont font;
        double ascent = 0;
    };
    std::vector<DrawnFont> fonts_;
};

} // namespace velmora::pages
