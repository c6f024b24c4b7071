#pragma once

#include <QColor>
#include <QPalette>

class QApplication;
class QString;
class QWidget;

namespace velmora {

// The one spacing grid of all windows, in device-independent dots.
namespace spacing {
inline constexpr int small = 4;
inline constexpr int normal = 8;
inline constexpr int large = 16;
} // namespace spacing

enum class Shade { Light, Dark };

// The shade of the desktop that the program runs on; ask before the look is applied.
Shade DesktopShade(const QApplication& application);

// Gives every window of the program the one style, font and palette.
void ApplyLook(QApplication& application, Shade shade);

QPalette LookPalette(Shade shade);
// Of a palette made here: what words of warning, and quiet secondary words, are written in.
QColor WarningColour(const QPalette& palette);
QColor QuietColour(const QPalette& palette);

} // namespace velmora
