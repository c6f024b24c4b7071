#include "platform/pages/PagePainter.h"

#include "platform/pages/PageFont.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

namespace velmora::pages {

namespace {
constexpr QRgb boxGrey = qRgb(192, 192, 192);
}

PagePainter::PagePainter(const Document& document) {
    fonts_.reserve(document.fonts.size());
    for (const FontSpec& spec : document.fonts) {
        QFont font = PageFont::MakeFont(spec);
        const double ascent = QFontMetricsF(font).ascent();
        fonts_.push_back({std::move(font), ascent});
    }
}

void PagePainter::Draw(QPainter& painter, const Page& page) const {
    DrawBand(painter, page, 0, page.Height());
}

void PagePainter::DrawSheet(QPainter& painter, const Document& document, const Sheet& sheet) const {
    const Page& page = document.pages[sheet.page];
    const bool whole = sheet.top == 0 && sheet.bottom == page.Height();
    painter.save();
    painter.translate(sheet.left, sheet.offset);
    painter.scale(sheet.scale, sheet.scale);
    painter.translate(0, -sheet.top);
    if (!whole) {
        painter.setClipRect(0, sheet.top, page.Width(), sheet.bottom - sheet.top);
    }
    DrawBand(painter, page, sheet.top, sheet.bottom);
    painter.restore();
}

void PagePainter::DrawBand(QPainter& painter, const Page& page, int top, int bottom) const {
    painter.setPen(Qt::black);
    int font = -1;
    int penWidth = -1;
    const auto usePen = [&](const Item& item) {
        if (penWidth != static_cast<int>(item.text)) {
            penWidth = static_cast<int>(item.text);
            // A pen of width 0 is one device dot wide on any device.
            painter.setPen(QPen(Qt::black, penWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        }
    };
    for (const Item& item : page.Items()) {
        if (item.y >= bottom || item.y + item.height < top || (item.height > 0 && item.y + item.height == top)) {
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
