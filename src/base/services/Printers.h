#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// The numbers are the printer's own orientation codes.
enum class Orientation { Portrait = 1, Landscape = 2 };

// A sheet as a printer takes it, as it is held to be read. Lengths are twips (1/1440 inch). The printable area is what
// the printer can reach.
struct PrinterPage {
    int paperWidth = 0;
    int paperHeight = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    // Height of one dot of the printer.
    double twipsPerDot = 2.4;
    friend bool operator==(const PrinterPage&, const PrinterPage&) = default;
};

struct PrinterFont {
    QString family;
    double points = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
};

// The installed printers and the current one, which reports are measured for and printed on.
class Printers {
public:
    virtual ~Printers() = default;
    // Device names in installation order; may be empty.
    virtual QStringList DeviceNames() const = 0;
    virtual QString CurrentDevice() const = 0;
    // Makes an installed printer the current one, with its paper as it is set now; throws Error when there is none of
    // that name.
    virtual void SelectDevice(const QString& deviceName) = 0;
    // What is printed becomes a PDF file instead of sheets of paper.
    virtual bool PrintsToFile() const = 0;
    virtual PrinterFont CurrentFont() const = 0;
    virtual void SetFontName(const QString& family) = 0;
    virtual void SetFont(const PrinterFont& font) = 0;
    virtual Orientation CurrentOrientation() const = 0;
    virtual void SetOrientation(Orientation orientation) = 0;
    // The current paper in the current orientation.
    virtual PrinterPage CurrentPage() const = 0;
    // Full width of the current paper in the current orientation.
    int PageWidth() const { return CurrentPage().paperWidth; }
};

} // namespace velmora
