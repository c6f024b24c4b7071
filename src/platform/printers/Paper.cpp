#include "platform/printers/Paper.h"

#include <algorithm>

namespace velmora::printers {

PrinterPage LocalePaper(const QLocale& locale) {
    constexpr int halfInch = 720;
    const bool letter = locale.measurementSystem() == QLocale::ImperialUSSystem;
    PrinterPage page;
    page.paperWidth = letter ? 12240 : 11906;
    page.paperHeight = letter ? 15840 : 16838;
    page.left = halfInch;
    page.top = halfInch;
    page.width = page.paperWidth - 2 * halfInch;
    page.height = page.paperHeight - 2 * halfInch;
    return page;
}

PrinterPage Turned(const PrinterPage& portrait, Orientation orientation) {
    if (orientation == Orientation::Portrait) {
        return portrait;
    }
    PrinterPage turned = portrait;
    turned.paperWidth = portrait.paperHeight;
    turned.paperHeight = portrait.paperWidth;
    turned.left = std::max(portrait.top, portrait.paperHeight - portrait.top - portrait.height);
    turned.top = std::max(portrait.left, portrait.paperWidth - portrait.left - portrait.width);
    turned.width = turned.paperWidth - 2 * turned.left;
    turned.height = turned.paperHeight - 2 * turned.top;
    return turned;
}

} // namespace velmora::printers
