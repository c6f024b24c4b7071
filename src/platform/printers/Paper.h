#pragma once

#include "base/services/Printers.h"

#include <QLocale>

namespace velmora::printers {

// A4, or Letter where the locale measures so, in portrait with margins of half an inch.
PrinterPage LocalePaper(const QLocale& locale);

// The page turned to the orientation. Printers turn sheets to either side, so a turned page keeps the greater of the
// two opposite margins on both sides.
PrinterPage Turned(const PrinterPage& portrait, Orientation orientation);

} // namespace velmora::printers
