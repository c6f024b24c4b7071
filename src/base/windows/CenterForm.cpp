#include "base/windows/CenterForm.h"

#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QWidget>

namespace velmora {

std::optional<QPoint> CentredPosition(QSize window, const QRect& screen) {
    if (window.width() >= screen.width() || window.height() >= screen.height()) {
        return std::nullopt;
    }
    return screen.topLeft() + QPoint((screen.width() - window.width()) / 2, (screen.height() - window.height()) / 2);
}

void CenterForm(QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    if (const auto position = CentredPosition(window.size(), screen)) {
        window.move(*position);
    } else {
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
}

} // namespace velmora
