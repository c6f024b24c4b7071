#include "layouts/document/TextCells.h"

#include <algorithm>
#include <numeric>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

// What would draw an empty frame or move the line is a blank; line ends stay.
QString Printable(QString text) {
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c < u' ' && c != u'\n' && c != u'\r'; }, QChar(u' '));
    return text;
}

QString Shortened(const print::PageSurface& surface, QString line, int width) {
    const QString dots = u"..."_s;
    while (!line.isEmpty() && surface.TextWidth(line + dots) > width) {
        line.chop(1);
    }
    return line.trimmed() + dots;
}

int AlignedX(const TextCell& cell, int textWidth) {
    switch (cell.alignment) {
    case Alignment::Center:
        return cell.x + std::max((cell.width - textWidth) / 2, 0);
    case Alignment::Right:
        return cell.x + std::max(cell.width - textWidth, 0);
    case Alignment::Left:
        break;
    }
    return cell.x;
}

} // namespace

int TextCell::Height() const {
    return std::accumulate(lines.begin(), lines.end(), 0, [](int sum, const Line& line) { return sum + line.height; });
}

void AddLines(TextCell& cell, print::PageSurface& surface, const QString& text, const pages::FontSpec& font,
              size_t mostLines) {
    const QString whole = Printable(text);
    if (whole.trimmed().isEmpty()) {
        return;
    }
    surface.SetFont(font);
    std::vector<QStringView> lines = surface.Wrap(whole, std::max(cell.width, 1));
    const bool tooMany = mostLines > 0 && lines.size() > mostLines;
    lines.resize(tooMany ? mostLines : lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        QString line = lines[i].toString();
        // The blank that a line was wrapped at would push the rest to the left.
        while (line.endsWith(u' ')) {
            line.chop(1);
        }
        if (tooMany && i + 1 == lines.size()) {
            line = Shortened(surface, line, cell.width);
        }
        cell.lines.push_back({line, font, surface.LineHeight()});
    }
}

int DrawLines(TextCell& cell, print::PageSurface& surface, int top, int room, size_t atLeast) {
    int height = 0;
    for (size_t count = 0; !cell.IsDrawn(); ++count, ++cell.drawn) {
        const TextCell::Line& line = cell.lines[cell.drawn];
        if (height + line.height > room && count >= atLeast) {
            break;
        }
        surface.SetFont(line.font);
        surface.CurrentX = AlignedX(cell, surface.TextWidth(line.text));
        surface.CurrentY = top + height;
        surface.Print(line.text);
        height += line.height;
    }
    return height;
}

void DrawRule(print::PageSurface& surface, int x, int y, int width, int thickness) {
    surface.DrawWidth = thickness;
    surface.CurrentX = x;
    surface.CurrentY = y;
    surface.DrawLineTo(x + width, y);
}

void DrawTickBox(print::PageSurface& surface, int x, int y, int side, bool ticked) {
    surface.FillStyle = pages::Fill::None;
    surface.DrawWidth = 12;
    surface.CurrentX = x;
    surface.CurrentY = y;
    surface.DrawBox(0, 0, side, side);
    if (ticked) {
        surface.DrawWidth = 22;
        surface.CurrentX = x + side / 5;
        surface.CurrentY = y + side / 2;
        surface.DrawLineTo(x + side * 2 / 5, y + side * 3 / 4);
        surface.DrawLineTo(x + side * 4 / 5, y + side / 5);
    }
}

} // namespace velmora::layouts
