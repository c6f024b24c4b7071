#pragma once

#include "app/report/CommandLine.h"
#include "platform/printers/SystemPrinters.h"

namespace velmora::report {

// The printers as a command line has them: for pages the system's queues when it names one or prints on paper, else
// none, so that no print server is asked. With --to pdf the pages of the chosen printer, or of none, go into a file.
class ReportPrinters : public printers::SystemPrinters {
public:
    ReportPrinters(const Command& command, const QLocale& locale);

    bool PrintsToFile() const override { return toPdf_ || SystemPrinters::PrintsToFile(); }
    void Print(const QString& deviceName, const printers::QueueJob& job) override;

    // Makes the printer that the command line names the current one. Throws Error when there is no such printer, or
    // none to print on.
    void Choose(const Command& command);
    bool HasPrinted() const { return printed_; }

private:
    bool toPdf_ = false;
    bool printed_ = false;
};

} // namespace velmora::report
