#pragma once

#include "platform/pages/Page.h"

#include <QRect>

namespace velmora::pages {

// One place where a text was found: the page's index, and the rectangles that it covers there, in twips; more than one
// where it runs on to another line.
struct TextHit {
    int page = 0;
    std::vector<QRect> marks;
};

// Every place of a text, page by page in the order in which it was written. Letter case does not matter. A phrase is
// found across the line ends of a wrapped paragraph. Nothing is found for an empty text.
std::vector<TextHit> FindText(const Document& document, const QString& wanted);

} // namespace velmora::pages
