#pragma once

#include "base/windows/Look.h"

#include <QProxyStyle>
#include <QWidget>

namespace velmora {

// The look of the program with air on both sides of a grid's texts and captions.
class GridStyle : public QProxyStyle {
public:
    explicit GridStyle(QObject* parent) { setParent(parent); }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin ? usual + spacing::small : usual;
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_Table_GridLineColor && widget != nullptr
                   ? static_cast<int>(widget->palette().color(QPalette::Dark).rgba())
                   : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

} // namespace velmora
