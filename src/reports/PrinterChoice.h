#pragma once

#include "base/services/Printers.h"

namespace velmora {

// Makes every installed printer of that device name the current one, in installation order, so that the last of them
// stays. Without any, the current printer stays as it is. Throws Error when the print system fails.
void SelectPrinter(Printers& printers, const QString& deviceName);

} // namespace velmora
