#include "base/windows/Look.h"

#include <QApplication>
#include <QFont>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace velmora {

namespace {

struct Shades {
    QRgb window;
    QRgb base;
    QRgb alternate;
    QRgb button;
    QRgb text;
    QRgb quiet;
    QRgb mid;
    QRgb dark;
    QRgb accent;
    QRgb onAccent;
    QRgb disabled;
};

constexpr Shades light = {0xfff4f5f7, 0xffffffff, 0xfff7f8fa, 0xfffbfbfc, 0xff1d2329, 0xff5a6570,
                          0xffc9ced4, 0xffdde1e5, 0xff1f6fb2, 0xffffffff, 0xff9aa3ac};
constexpr Shades dark = {0xff26292d, 0xff1c1f22, 0xff212428, 0xff32363b, 0xffe6e8ea, 0xffa3abb3,
                         0xff4a5057, 0xff17191c, 0xff4c9be0, 0xff0c1116, 0xff6d757d};

// Between the window and its words: seen on both, and quieter than the words.
QColor Outline(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor words = palette.color(QPalette::WindowText);
    const auto between = [](int from, int to) { return from + (to - from) * 45 / 100; };
    return {between(window.red(), words.red()), between(window.green(), words.green()),
            between(window.blue(), words.blue())};
}

// A tick box, or the ring of an option button, with what it says inside.
void DrawIndicator(const QStyleOption& option, bool box, QPainter& painter) {
    const QPalette& palette = option.palette;
    const QRectF frame = QRectF(option.rect).adjusted(1, 1, -1, -1);
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    const bool focus = option.state.testFlag(QStyle::State_HasFocus);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(focus ? palette.color(QPalette::Highlight) : Outline(palette), focus ? 1.5 : 1));
    painter.setBrush(enabled ? palette.color(QPalette::Base) : palette.color(QPalette::Window));
    const double round = box ? 2 : frame.width() / 2;
    painter.drawRoundedRect(frame, round, round);
    const QColor mark = palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);
    const double unit = frame.width() / 12;
    if (box && option.state.testFlag(QStyle::State_On)) {
        painter.setPen(QPen(mark, 1.8 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({frame.topLeft() + QPointF(3 * unit, 6.2 * unit),
                                        frame.topLeft() + QPointF(5.2 * unit, 8.6 * unit),
                                        frame.topLeft() + QPointF(9.2 * unit, 3.6 * unit)}));
    } else if (option.state.testFlag(box ? QStyle::State_NoChange : QStyle::State_On)) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
        painter.drawEllipse(frame.center(), 2.8 * unit, 2.8 * unit);
    }
    painter.restore();
}

class LookStyle : public QProxyStyle {
public:
    LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    // The toolkit outlines boxes and option buttons by darkening the window, which on a dark one leaves nothing to see.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
        if (box || element == PE_IndicatorRadioButton) {
            DrawIndicator(*option, box, *painter);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_FrameLineEdit && !option->state.testFlag(State_HasFocus)) {
            painter->setPen(Outline(option->palette));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        }
    }

    // One flat bar: a report paints it with every per cent.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
        if (element != CE_ProgressBar || bar == nullptr || bar->maximum <= bar->minimum) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QRect done = bar->rect.adjusted(1, 1, -1, -1);
        painter->fillRect(bar->rect, bar->palette.color(QPalette::Mid));
        painter->fillRect(done, bar->palette.color(QPalette::Base));
        done.setWidth(done.width() * (bar->progress - bar->minimum) / (bar->maximum - bar->minimum));
        painter->fillRect(done, bar->palette.color(QPalette::Highlight));
    }

    // Answers are words: the toolkit's own pictures beside them are not in our hand.
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

Shade DesktopShade(const QApplication& application) {
    return IsDark(application.palette()) ? Shade::Dark : Shade::Light;
}

QPalette LookPalette(Shade shade) {
    const Shades& colours = shade == Shade::Dark ? dark : light;
    QPalette palette(QColor::fromRgba(colours.button), QColor::fromRgba(colours.window));
    const auto set = [&](QPalette::ColorRole role, QRgb colour) { palette.setColor(role, QColor::fromRgba(colour)); };
    set(QPalette::Base, colours.base);
    set(QPalette::AlternateBase, colours.alternate);
    set(QPalette::WindowText, colours.text);
    set(QPalette::Text, colours.text);
    set(QPalette::ButtonText, colours.text);
    set(QPalette::PlaceholderText, colours.quiet);
    set(QPalette::Mid, colours.mid);
    set(QPalette::Dark, colours.dark);
    set(QPalette::Highlight, colours.accent);
    set(QPalette::HighlightedText, colours.onAccent);
    set(QPalette::Link, colours.accent);
    set(QPalette::ToolTipBase, colours.base);
    set(QPalette::ToolTipText, colours.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgba(colours.disabled));
    }
    return palette;
}

QColor WarningColour(const QPalette& palette) {
    return IsDark(palette) ? QColor(0xff, 0xb8, 0x6b) : QColor(0x9a, 0x4b, 0x00);
}

QColor QuietColour(const QPalette& palette) {
    return palette.color(QPalette::PlaceholderText);
}

void ApplyLook(QApplication& application, Shade shade) {
    // The application owns its style, which the linter does not know.
    application.setStyle(new LookStyle);
    application.setPalette(LookPalette(shade));
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPointSizeF(10);
    application.setFont(font);
}

} // namespace velmora
