#pragma once

#include "platform/pages/Page.h"
#include "platform/pages/PageFont.h"
#include "print/ReportWriter.h"

#include <memory>
#include <vector>

namespace velmora::print {

// A text as pages show it: what would move the print position or draw an empty frame is a blank. Line ends stay.
QString OnPage(Text text);

// A sheet as reports draw on it. Lengths are twips. The drawable area is what positions count in: (0, 0) is its upper
// left corner, so that nothing that a report draws falls into a margin that the printer cannot reach.
struct PageGeometry {
    int paperWidth = 0;
    int paperHeight = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    // Height of one dot of the printer, by which vertical spaces are given.
    double twipsPerDot = 2.4;
    // Thickness of a line of draw width 1.
    double twipsPerPen = 2.4;
};

// The drawing state over the pages of one document: print position, font, pen and fill.
class PageSurface {
public:
    PageSurface(pages::Document& document, const PageGeometry& geometry, const pages::FontSpec& font);

    const PageGeometry& Geometry() const { return geometry_; }
    int Width() const { return geometry_.width; }
    int Height() const { return geometry_.height; }

    int CurrentX = 0;
    int CurrentY = 0;
    pages::Fill FillStyle = pages::Fill::None;
    int DrawWidth = 1;

    const pages::FontSpec& Font() const { return fonts_[font_]->Spec(); }
    void SetFont(const pages::FontSpec& font);

    int TextWidth(QStringView text) const { return fonts_[font_]->TextWidth(text); }
    // Height of a line of text.
    int LineHeight() const { return fonts_[font_]->LineHeight(); }
    // The text cut into lines of at most `width`: at line ends, else behind the last blank that fits, else inside a
    // word that is wider than the line. The views are into `text`.
    std::vector<QStringView> Wrap(QStringView text, int width) const;

    // The longest beginning of a line that is no wider than `width`.
    QStringView Fitting(QStringView line, int width) const;

    // How far down texts and boxes reach on the page, at least to its top.
    int Lowest() const { return lowest_; }

    // Draws a piece of one line; the print position moves to its end.
    void Print(QStringView text);
    // Ends the line: the print position goes to the left edge, one line down.
    void EndLine();
    void DrawLineTo(int x, int y);
    // A level line of that draw width; the print position moves to its end.
    void DrawRule(int x, int y, int width, int thickness);
    // A rectangle at (CurrentX + dx, CurrentY + dy); the print position stays.
    void DrawBox(int dx, int dy, int width, int height);
    void AddDots(int dots);

    // Starts another page; the print position goes to its upper left corner.
    void StartPage();
    int PageCount() const { return static_cast<int>(document_.pages.size()); }

private:
    pages::Page& CurrentPage() { return document_.pages.back(); }
    int PenTwips() const;
    // Makes the page tall enough for what is drawn down to `bottom`: nothing drawn is lost where breaks are off.
    void Reach(int bottom);

    pages::Document& document_;
    PageGeometry geometry_;
    // Parallel to the document's fonts.
    std::vector<std::unique_ptr<pages::PageFont>> fonts_;
    size_t font_ = 0;
    int lowest_ = 0;
};

} // namespace velmora::print
