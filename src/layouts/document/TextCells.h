#pragma once

#include "layouts/file/Layout.h"
#include "print/pages/PageSurface.h"

namespace velmora::layouts {

// Lines of text inside one column of the page, laid out once and drawn from the top, on as many pages as they need.
// Lengths are twips.
struct TextCell {
    struct Line {
        QString text;
        pages::FontSpec font;
        int height = 0;
    };
    int x = 0;
    int width = 0;
    Alignment alignment = Alignment::Left;
    std::vector<Line> lines;
    // Lines drawn so far.
    size_t drawn = 0;

    int Height() const;
    bool IsDrawn() const { return drawn == lines.size(); }
};

// Adds a text to the cell, wrapped to its width; none for an empty one. With `mostLines` what is longer ends in "...".
void AddLines(TextCell& cell, print::PageSurface& surface, const QString& text, const pages::FontSpec& font,
              size_t mostLines = 0);

// Draws the lines that fit into `room` from `top` on, `atLeast` as many all the same. Returns the height drawn.
int DrawLines(TextCell& cell, print::PageSurface& surface, int top, int room, size_t atLeast);

// A box to tick, its left upper corner at (x, y).
void DrawTickBox(print::PageSurface& surface, int x, int y, int side, bool ticked);

void DrawRule(print::PageSurface& surface, int x, int y, int width, int thickness);

} // namespace velmora::layouts
