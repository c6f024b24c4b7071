#include "print/pages/TextCell.h"

#include <algorithm>
#include <numeric>

namespace velmora::print {

using namespace Qt::StringLiterals;

namespace {

QString Shortened(const PageSurface& surface, QString line, int width) {
    const QString dots = u"..."_s;
    while (!line.isEmpty() && surface.TextWidth(line + dots) > width) {
        line.chop(1);
    }
    return line.trimmed() + dots;
}

} // namespace

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

int TextCell::Height() const {
    return std::accumulate(lines.begin(), lines.end(), 0, [](int sum, const Line& line) { return sum + line.height; });
}

void AddWrapped(TextCell& cell, PageSurface& surface, const QString& text, const pages::FontSpec& font) {
    surface.SetFont(font);
    const QStringView whole(text);
    for (const QStringView line : surface.Wrap(whole, std::max(cell.width, 1))) {
        const bool endsParagraph = line.end() == whole.end() || *line.end() == u'\n' || *line.end() == u'\r';
        // Most texts are one line, which needs no copy.
        cell.lines.push_back(
            {line.size() == whole.size() ? text : line.toString(), font, surface.LineHeight(), !endsParagraph});
    }
}

void AddLines(TextCell& cell, PageSurface& surface, const QString& text, const pages::FontSpec& font,
              size_t mostLines) {
    const QString shown = OnPage(text);
    if (shown.trimmed().isEmpty()) {
        return;
    }
    const size_t first = cell.lines.size();
    AddWrapped(cell, surface, shown, font);
    const bool tooMany = mostLines > 0 && cell.lines.size() - first > mostLines;
    cell.lines.resize(tooMany ? first + mostLines : cell.lines.size());
    for (size_t i = first; i < cell.lines.size(); ++i) {
        // The blank that a line was wrapped at would push the rest to the left.
        QString& line = cell.lines[i].text;
        while (line.endsWith(u' ')) {
            line.chop(1);
        }
    }
    if (tooMany) {
        cell.lines.back().text = Shortened(surface, cell.lines.back().text, cell.width);
    }
}

int DrawLines(TextCell& cell, PageSurface& surface, int top, int room, size_t atLeast) {
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

void DrawTickBox(PageSurface& surface, int x, int y, int side, bool ticked) {
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

} // namespace velmora::print
