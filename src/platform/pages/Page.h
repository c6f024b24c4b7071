#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <vector>

// Pages as display lists. All lengths are twips (1/1440 inch) from the page's upper left corner. A list is measured and
// recorded once and never changed by being shown: the same list is replayed on the screen, on a printer and into a PDF.
namespace velmora::pages {

struct FontSpec {
    QString family;
    double points = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    friend bool operator==(const FontSpec&, const FontSpec&) = default;
};

enum class Fill : quint8 { None, Grey };

struct Item {
    enum class Kind : quint8 { Text, Line, Box };
    Kind kind = Kind::Text;
    Fill fill = Fill::None;
    // Index into the document's fonts.
    quint16 font = 0;
    // Text: left end and top of the line. Line: from (x, y) to (x + width, y + height). Box: its rectangle.
    qint32 x = 0;
    qint32 y = 0;
    qint32 width = 0;
    qint32 height = 0;
    // Text: place and length in the page's string pool. Line and Box: `text` is the pen's width.
    quint32 text = 0;
    quint32 length = 0;
};

// Where a recorded list stands on its page: the recorded point (x, y) is shown at (x * scaleX + dx, y * scaleY + dy).
struct Placement {
    double scaleX = 1;
    double scaleY = 1;
    double dx = 0;
    double dy = 0;
    friend bool operator==(const Placement&, const Placement&) = default;
};

class Page {
public:
    Page(int width, int height) : width_(width), height_(height) {}

    int Width() const { return width_; }
    int Height() const { return height_; }
    // Makes the page taller, never shorter.
    void GrowTo(int height) { height_ = std::max(height_, height); }

    const Placement& Placed() const { return placement_; }
    // Puts the list, as it was recorded, on a page of another size.
    void Place(int width, int height, const Placement& placement) {
        width_ = width;
        height_ = height;
        placement_ = placement;
    }

    // `width` and `height` are the text's measured extent.
    void AddText(quint16 font, int x, int y, int width, int height, QStringView text);
    void AddLine(int x1, int y1, int x2, int y2, int penWidth);
    void AddBox(int x, int y, int width, int height, Fill fill, int penWidth);

    const std::vector<Item>& Items() const { return items_; }
    QStringView Text(const Item& item) const {
        return QStringView(texts_).mid(static_cast<qsizetype>(item.text), static_cast<qsizetype>(item.length));
    }
    // The page's text as a person reads it: a line for every text line from top to bottom, its pieces from left to
    // right with a TAB between.
    QString PlainText() const;
    // Gives back memory that recording reserved.
    void Shrink();

private:
    int width_;
    int height_;
    Placement placement_;
    std::vector<Item> items_;
    QString texts_;
};

// The pages of one report and the fonts that they use.
struct Document {
    QString name;
    std::vector<FontSpec> fonts;
    std::vector<Page> pages;

    // The font's index; adds it when it is new.
    quint16 FontIndex(const FontSpec& font);
};

} // namespace velmora::pages
