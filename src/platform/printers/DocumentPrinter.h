#pragma once

#include "platform/printers/PrintQueues.h"

namespace velmora::printers {

// Prints finished documents on the printer that they were made for, whichever is the current one by then.
class DocumentPrinter {
public:
    virtual ~DocumentPrinter() = default;
    // Throws Error, naming the printer, unless the printer has taken the whole document.
    virtual void Print(const QString& deviceName, const QueueJob& job) = 0;
};

} // namespace velmora::printers
