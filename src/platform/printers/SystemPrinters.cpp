#include "platform/printers/SystemPrinters.h"

#include "base/Error.h"
#include "platform/pages/PageFont.h"
#include "platform/printers/Paper.h"

namespace velmora::printers {

QString PdfFileDevice() {
    return QStringLiteral("Print to PDF file");
}

SystemPrinters::SystemPrinters(PrintQueues& queues, const QLocale& locale)
    : queues_(queues), localePaper_(LocalePaper(locale)) {
    font_.family = pages::DefaultFamily();
}

QStringList SystemPrinters::DeviceNames() const {
    QStringList names = queues_.Names();
    names += PdfFileDevice();
    return names;
}

SystemPrinters::Device SystemPrinters::Describe(const QString& deviceName) const {
    if (deviceName == PdfFileDevice()) {
        return {deviceName, localePaper_};
    }
    return {deviceName, queues_.Paper(deviceName).value_or(localePaper_)};
}

const SystemPrinters::Device& SystemPrinters::Current() const {
    if (!current_) {
        const QString queue = queues_.DefaultName();
        current_ = Describe(queue.isEmpty() ? PdfFileDevice() : queue);
    }
    return *current_;
}

void SystemPrinters::SelectDevice(const QString& deviceName) {
    current_ = Describe(deviceName);
}

void SystemPrinters::SetFontName(const QString& family) {
    if (!family.isEmpty()) {
        font_.family = family;
    }
}

PrinterPage SystemPrinters::CurrentPage() const {
    return Turned(Current().portrait, orientation_);
}

void SystemPrinters::Print(const QString& deviceName, const QueueJob& job) {
    if (deviceName == PdfFileDevice()) {
        throw ProgramError(ErrorNumber::InvalidCall,
                           QStringLiteral("\"%1\" needs the name of a file to print into").arg(deviceName));
    }
    queues_.Submit(deviceName, job);
}

} // namespace velmora::printers
