#pragma once

#include <QIcon>
#include <QPainterPath>

namespace velmora {

// The program's own icons: strokes of one weight on a grid of 24 by 24, drawn in the colour of button texts, sharp at
// every size.
enum class Glyph {
    First,
    Previous,
    Next,
    Last,
    PrintPage,
    PrintAll,
    Up,
    Down,
    Close,
    Find,
    Copy,
    Save,
    ZoomIn,
    ZoomOut,
    FitWidth,
    FitPage,
    Add,
    Delete,
    Wait,
    Calendar,
    Warning,
    Done,
};

QPainterPath GlyphPath(Glyph glyph);
QIcon GlyphIcon(Glyph glyph);

} // namespace velmora
