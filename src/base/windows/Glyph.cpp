#include "base/windows/Glyph.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace velmora {

namespace {

constexpr double grid = 24;
constexpr double weight = 1.75;

// Strokes as words: M x y begins one, L x y draws to a point, R x y w h is a rectangle, O x y r a circle.
constexpr std::pair<Glyph, const char*> strokes[] = {
    {Glyph::First, "M 6 5 L 6 19 M 17 5 L 10 12 L 17 19"},
    {Glyph::Previous, "M 15 5 L 8 12 L 15 19"},
    {Glyph::Next, "M 9 5 L 16 12 L 9 19"},
    {Glyph::Last, "M 18 5 L 18 19 M 7 5 L 14 12 L 7 19"},
    {Glyph::PrintPage,
     "M 7 9 L 7 3 L 17 3 L 17 9 M 7 17 L 3 17 L 3 9 L 21 9 L 21 17 L 17 17 M 7 14 L 17 14 L 17 21 L 7 21 L 7 14"},
    {Glyph::PrintAll, "M 7 9 L 7 5 L 17 5 L 17 9 M 10 5 L 10 2 L 20 2 L 20 9 M 7 17 L 3 17 L 3 9 L 21 9 L 21 17 L 17 "
                      "17 M 7 14 L 17 14 L 17 21 L 7 21 L 7 14 M 10 17.5 L 14 17.5"},
    {Glyph::Up, "M 5 15 L 12 8 L 19 15"},
    {Glyph::Down, "M 5 9 L 12 16 L 19 9"},
    {Glyph::Close, "M 6 6 L 18 18 M 18 6 L 6 18"},
    {Glyph::Find, "O 10 10 6 M 15 15 L 21 21"},
    {Glyph::Copy, "R 8 8 12 13 M 5 16 L 4 16 L 4 3 L 16 3 L 16 4.5"},
    {Glyph::Save, "M 12 3 L 12 15 M 7 10 L 12 15 L 17 10 M 4 16 L 4 21 L 20 21 L 20 16"},
    {Glyph::ZoomIn, "O 10 10 6 M 15 15 L 21 21 M 7 10 L 13 10 M 10 7 L 10 13"},
    {Glyph::ZoomOut, "O 10 10 6 M 15 15 L 21 21 M 7 10 L 13 10"},
    {Glyph::FitWidth, "M 4 4 L 4 20 M 20 4 L 20 20 M 7 12 L 17 12 M 10 9 L 7 12 L 10 15 M 14 9 L 17 12 L 14 15"},
    {Glyph::FitPage, "R 6 3 12 18 M 9 8 L 15 8 M 9 12 L 15 12 M 9 16 L 12 16"},
    {Glyph::Add, "M 12 5 L 12 19 M 5 12 L 19 12"},
    {Glyph::Delete,
     "M 4 6 L 20 6 M 9 6 L 9 3 L 15 3 L 15 6 M 6 6 L 7 21 L 17 21 L 18 6 M 10 10 L 10 17 M 14 10 L 14 17"},
    {Glyph::Wait,
     "M 5 3 L 19 3 M 5 21 L 19 21 M 7 3 L 7 7 L 12 12 L 7 17 L 7 21 M 17 3 L 17 7 L 12 12 L 17 17 L 17 21"},
    {Glyph::Calendar,
     "R 4 5 16 16 M 4 10 L 20 10 M 8 3 L 8 7 M 16 3 L 16 7 M 8 14 L 10 14 M 14 14 L 16 14 M 8 17.5 L 10 17.5"},
    {Glyph::Warning, "M 12 4 L 21 20 L 3 20 L 12 4 M 12 10 L 12 14.5 M 12 17.2 L 12 17.4"},
    {Glyph::Done, "M 5 13 L 10 18 L 19 7"},
};

class GlyphEngine : public QIconEngine {
public:
    explicit GlyphEngine(Glyph glyph) : glyph_(glyph), path_(GlyphPath(glyph)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        const double scale = std::min(rect.width(), rect.height()) / grid;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center().x() + 0.5 - grid * scale / 2, rect.center().y() + 0.5 - grid * scale / 2);
        painter->scale(scale, scale);
        painter->setPen(
            QPen(QGuiApplication::palette().color(group, role), weight, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(path_);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return image;
    }

    QIconEngine* clone() const override { return new GlyphEngine(glyph_); }

private:
    Glyph glyph_;
    QPainterPath path_;
};

} // namespace

QPainterPath GlyphPath(Glyph glyph) {
    QPainterPath path;
    const auto* drawn = std::ranges::find(strokes, glyph, [](const auto& each) { return each.first; });
    const QList<QByteArray> words = QByteArray(drawn->second).split(' ');
    qsizetype at = 0;
    const auto number = [&] { return words.value(at++).toDouble(); };
    while (at < words.size()) {
        const char word = words[at++].front();
        const double x = number();
        const double y = number();
        if (word == 'M') {
            path.moveTo(x, y);
        } else if (word == 'L') {
            path.lineTo(x, y);
        } else if (word == 'O') {
            const double radius = number();
            path.addEllipse(QPointF(x, y), radius, radius);
        } else {
            const double width = number();
            path.addRect(x, y, width, number());
        }
    }
    return path;
}

QIcon GlyphIcon(Glyph glyph) {
    return QIcon(new GlyphEngine(glyph));
}

} // namespace velmora
