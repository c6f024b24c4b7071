#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// The numbers are the printer's own orientation codes.
enum class Orientation { Portrait = 1, Landscape = 2 };

// The installed printers and the current one. Lengths are twips (1/1440 inch).
class Printers {
public:
    virtual ~Printers() = default;
    // Device names in installation order; may be empty.
    virtual QStringList DeviceNames() const = 0;
    virtual QString CurrentDevice() const = 0;
    // Makes an installed printer the current one; throws Error when there is none of that name.
    virtual void SelectDevice(const QString& deviceName) = 0;
    virtual void SetFontName(const QString& family) = 0;
    virtual Orientation CurrentOrientation() const = 0;
    virtual void SetOrientation(Orientation orientation) = 0;
    // Full width of the current paper in the current orientation.
    virtual int PageWidth() const = 0;
};

} // namespace velmora
