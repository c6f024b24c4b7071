#pragma once

#include "platform/pages/Page.h"

#include <QFont>
#include <QFontMetricsF>

#include <array>

namespace velmora::pages {

// The family of reports, which comes with the program: the same metrics on every machine.
QString DefaultFamily();

// `family` where it is installed, else the default one. Throws Error when that is not installed either: pages in any
// other font would not look alike from machine to machine.
QString InstalledFamily(const QString& family);

// A font measured in twips on a scale that does not depend on the device: the same on screen, printer and PDF, since
// every device draws it at this pixel size through a painter scaled to twips. Needs a QGuiApplication.
class PageFont {
public:
    explicit PageFont(const FontSpec& spec);

    const FontSpec& Spec() const { return spec_; }
    const QFont& Font() const { return font_; }
    // Width of a text of one line, without kerning and ligatures, rounded to whole twips.
    int TextWidth(QStringView text) const;
    // The same, not rounded. Adding up the widths of a text's pieces gives the width of the text.
    double Advance(QStringView text) const;
    // Height of a line.
    int LineHeight() const { return lineHeight_; }
    // From the top of a line to its base line.
    double Ascent() const { return ascent_; }

    // The toolkit's font for a specification, in twips.
    static QFont MakeFont(const FontSpec& spec);

private:
    // Letters whose advance is kept in a table: Latin with its accents.
    static constexpr qsizetype tableSize = 0x180;

    FontSpec spec_;
    QFont font_;
    QFontMetricsF metrics_;
    std::array<float, tableSize> advances_{};
    int lineHeight_ = 0;
    double ascent_ = 0;
};

} // namespace velmora::pages
