#include "platform/pages/PagePainter.h"

#include "platform/pages/PageFont.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <limits>

namespace velmora::pages {

namespace {
constexpr QRgb boxGrey = qRgb(192, 192, 192);
// How far ink may stand out of an item's extent: accents, wide pens.
constexpr double reach = 200;
} // namespace

PagePainter::PagePainter(const Document& document) {
    fonts_.reserve(document.fonts.size());
    for (const FontSpec& spec : document.fonts) {
        const QFont font = PageFont::MakeFont(spec);
        const double ascent = QFontMetricsF(font).ascent();
        fonts_.push_back({font, ascent});
    }
}

void PagePainter::Draw(QPainter& painter, const Page& page, std::optional<QRectF> visible) const {
    double top = -std::numeric_limits<double>::infinity();
    double bottom = std::numeric_limits<double>::infinity();
    const Placement& placed = page.Placed();
    if (visible) {
        top = (visible->top() - placed.dy) / placed.scaleY;
        bottom = (visible->bottom() - placed.dy) / placed.scaleY;
    }
    if (placed == Placement()) {
        DrawItems(painter, page, top, bottom);
        return;
    }
    painter.save();
    painter.translate(placed.dx, placed.dy);
    painter.scale(placed.scaleX, placed.scaleY);
    DrawItems(painter, page, top, bottom);
    painter.restore();
}

void PagePainter::DrawItems(QPainter& painter, const Page& page, double top, double bottom) const {
    painter.setPen(Qt::black);
    int font = -1;
    int penWidth = -1;
    // Printers' hairlines would fade away on a screen's coarser dots.
    const double thinnest = 0.5 / std::max(painter.deviceTransform().m11(), 1e-6);
    const auto usePen = [&](const Item& item) {
        if (penWidth != static_cast<int>(item.text)) {
            penWidth = static_cast<int>(item.text);
            // A pen of width 0 is one device dot wide on any device.
            painter.setPen(QPen(Qt::black, penWidth == 0 ? 0 : std::max<double>(penWidth, thinnest), Qt::SolidLine,
                                Qt::FlatCap, Qt::MiterJoin));
        }
    };
    for (const Item& item : page.Items()) {
        if (std::max(item.y, item.y + item.height) + reach < top ||
            std::min(item.y, item.y + item.height) - reach > bottom) {
            continue;
        }
        switch (item.kind) {
        case Item::Kind::Text:
            if (font != item.font) {
                font = item.font;
                painter.setFont(fonts_[item.font].font);
            }
            painter.drawText(QPointF(item.x, item.y + fonts_[item.font].ascent), page.Text(item).toString());
            break;
        case Item::Kind::Line:
            usePen(item);
            painter.drawLine(item.x, item.y, item.x + item.width, item.y + item.height);
            break;
        case Item::Kind::Box:
            usePen(item);
            painter.setBrush(item.fill == Fill::Grey ? QBrush(QColor(boxGrey)) : QBrush(Qt::NoBrush));
            painter.drawRect(item.x, item.y, item.width, item.height);
            break;
        }
    }
}

} // namespace velmora::pages
