#include "runner/ReportPrinters.h"

#include "base/Error.h"
#include "platform/printers/CupsQueues.h"
#include "platform/printers/NoQueues.h"

namespace velmora::runner {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<printers::PrintQueues> MakeQueues(const Delivery& delivery) {
    if (delivery.ToPages() && (delivery.target == DeliveryTarget::Printer || !delivery.printer.isEmpty())) {
        return std::make_unique<printers::CupsQueues>();
    }
    return std::make_unique<printers::NoQueues>();
}

} // namespace

ReportPrinters::ReportPrinters(const Delivery& delivery, const QLocale& locale)
    : SystemPrinters(MakeQueues(delivery), locale), toPdf_(delivery.target == DeliveryTarget::PdfFile) {}

void ReportPrinters::Choose(const Delivery& delivery) {
    if (!delivery.ToPages()) {
        return;
    }
    const QString& name = delivery.printer;
    if (!name.isEmpty()) {
        SelectDevice(name);
    }
    if (delivery.target == DeliveryTarget::Printer && PrintsToFile()) {
        QStringList queues = DeviceNames();
        queues.removeAll(printers::PdfFileDevice());
        throw ProgramError(
            ErrorNumber::Unavailable,
            queues.isEmpty()
                ? u"No printer is installed. Use --to pdf --output FILE to print into a file."_s
                : u"No printer is the default one. Name one of these with --printer: %1"_s.arg(queues.join(u", "_s)));
    }
}

void ReportPrinters::Print(const QString& deviceName, const printers::QueueJob& job) {
    SystemPrinters::Print(deviceName, job);
    printed_ = true;
}

} // namespace velmora::runner
