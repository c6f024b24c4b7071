#pragma once

#include "platform/printers/PrintQueues.h"

#include <QLocale>

#include <memory>

namespace velmora::printers {

// The name under which printing into a PDF file stands among the printers.
QString PdfFileDevice();

// The page turned to the orientation. Printers turn sheets to either side, so a turned page keeps the greater of the
// two opposite margins on both sides.
PrinterPage Turned(const PrinterPage& portrait, Orientation orientation);

// The system's print queues and, behind them, the entry that prints to a PDF file. The default queue is the current
// printer at first, or the PDF entry where none is the default.
class SystemPrinters : public Printers, public DocumentPrinter {
public:
    // The locale decides the paper where a queue does not name one.
    SystemPrinters(std::unique_ptr<PrintQueues> queues, const QLocale& locale);

    QStringList DeviceNames() const override;
    QString CurrentDevice() const override { return Current().name; }
    void SelectDevice(const QString& deviceName) override;
    bool PrintsToFile() const override { return CurrentDevice() == PdfFileDevice(); }
    PrinterFont CurrentFont() const override { return font_; }
    // An empty name leaves the font as it is.
    void SetFontName(const QString& family) override;
    void SetFont(const PrinterFont& font) override { font_ = font; }
    Orientation CurrentOrientation() const override { return orientation_; }
    void SetOrientation(Orientation orientation) override { orientation_ = orientation; }
    PrinterPage CurrentPage() const override;

    void Print(const QString& deviceName, const QueueJob& job) override;

private:
    struct Device {
        QString name;
        PrinterPage portrait;
    };
    const Device& Current() const;
    Device Describe(const QString& deviceName) const;

    std::unique_ptr<PrintQueues> queues_;
    PrinterPage localePaper_;
    // Asked for when it is first needed: the print system may be slow to answer.
    mutable std::optional<Device> current_;
    PrinterFont font_;
    Orientation orientation_ = Orientation::Portrait;
};

} // namespace velmora::printers
