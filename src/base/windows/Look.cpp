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

class LookStyle : public QProxyStyle {
public:
    LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

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
    application.setStyle(new LookStyle);
    application.setPalette(LookPalette(shade));
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPointSizeF(10);
    application.setFont(font);
}

} // namespace velmora
