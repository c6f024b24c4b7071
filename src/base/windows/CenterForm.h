#pragma once

#include <QSize>

#include <optional>

class QPoint;
class QRect;
class QWidget;

namespace velmora {

// Where a window of that size stands in the middle of the screen; none for one that is as wide or as tall as the
// screen, or larger: it has no room for its frame.
std::optional<QPoint> CentredPosition(QSize window, const QRect& screen);

// Puts the window in the middle of its screen's free area, or maximises it where it does not fit. Call it when the
// window has its size, before it is shown.
void CenterForm(QWidget& window);

} // namespace velmora
