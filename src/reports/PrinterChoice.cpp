#include "reports/PrinterChoice.h"

namespace velmora {

void SelectPrinter(Printers& printers, const QString& deviceName) {
    if (deviceName.isEmpty()) {
        return;
    }
    for (const QString& name : printers.DeviceNames()) {
        if (name == deviceName) {
            printers.SelectDevice(name);
        }
    }
}

} // namespace velmora
