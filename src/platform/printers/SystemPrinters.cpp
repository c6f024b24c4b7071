#include "platform/printers/SystemPrinters.h"

#include "base/Error.h"
#include "platform/pages/PageFont.h"

#include <algorithm>

namespace velmora::printers {

namespace {

// A4, or Letter where the locale measures so, in portrait with margins of half an inch.
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

} // namespace

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

QString PdfFileDevice() {
    return QStringLiteral("Print to PDF file");
}

SystemPrinters::SystemPrinters(std::unique_ptr<PrintQueues> queues, const QLocale& locale)
    : queues_(std::move(queues)), localePaper_(LocalePaper(locale)) {
    font_.family = pages::DefaultFamily();
}

QStringList SystemPrinters::DeviceNames() const {
    QStringList names = queues_->Names();
    names += PdfFileDevice();
    return names;
}

SystemPrinters::Device SystemPrinters::Describe(const QString& deviceName) const {
    if (deviceName == PdfFileDevice()) {
        return {deviceName, localePaper_};
    }
    return {deviceName, queues_->Paper(deviceName).value_or(localePaper_)};
}

const SystemPrinters::Device& SystemPrinters::Current() const {
    if (!current_) {
        const QString queue = queues_->DefaultName();
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
    queues_->Submit(deviceName, job);
}

} // namespace velmora::printers
