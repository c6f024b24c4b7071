#pragma once

#include "platform/printers/SystemPrinters.h"
#include "reports/Requests.h"

namespace velmora::runner {

// The printers of one delivery: for pages the system's queues when it names one or prints on paper, else none, so that
// no print server is asked. For a PDF file the pages of the chosen printer, or of none, go into a file.
class ReportPrinters : public printers::SystemPrinters {
public:
    ReportPrinters(const Delivery& delivery, const QLocale& locale);

    bool PrintsToFile() const override { return toPdf_ || SystemPrinters::PrintsToFile(); }
    void Print(const QString& deviceName, const printers::QueueJob& job) override;

    // Makes the printer that the delivery names the current one. Throws Error when there is no such printer, or
    // none to print on.
    void Choose(const Delivery& delivery);
    bool HasPrinted() const { return printed_; }

private:
    bool toPdf_ = false;
    bool printed_ = false;
};

} // namespace velmora::runner
