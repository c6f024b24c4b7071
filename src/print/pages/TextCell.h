#pragma once

#include "print/RecordForm.h"
#include "print/pages/PageSurface.h"

namespace velmora::print {

// Lines of text inside one column of the page, laid out once and drawn from the top, on as many pages as they need.
// Lengths are twips.
struct TextCell {
    struct Line {
        QString text;
        pages::FontSpec font;
        int height = 0;
        // The next line goes on with the same paragraph.
        bool isBroken = false;
    };
    int x = 0;
    int width = 0;
    Alignment alignment = Alignment::Left;
    std::vector<Line> lines = {};
    // Lines drawn so far.
    size_t drawn = 0;

    int Height() const;
    bool IsDrawn() const { return drawn == lines.size(); }
};

// Where something of that width begins in the cell.
int AlignedX(const TextCell& cell, int width);

// Adds a text, which is as OnPage makes it, wrapped to the cell's width: at least one line, with the blanks at the
// lines' ends.
void AddWrapped(TextCell& cell, PageSurface& surface, const QString& text, const pages::FontSpec& font);

// Adds any text without blanks at the lines' ends, and nothing for an empty text. With `mostLines` what is longer
// ends in "...".
void AddLines(TextCell& cell, PageSurface& surface, const QString& text, const pages::FontSpec& font,
              size_t mostLines = 0);

// Draws the lines that fit into `room` from `top` on, `atLeast` as many all the same. Returns the height drawn.
int DrawLines(TextCell& cell, PageSurface& surface, int top, int room, size_t atLeast);

// A box to tick, its left upper corner at (x, y).
void DrawTickBox(PageSurface& surface, int x, int y, int side, bool ticked);

} // namespace velmora::print
