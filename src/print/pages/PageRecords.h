#pragma once

#include "print/pages/PageSurface.h"
#include "print/pages/TextCell.h"

namespace velmora::print {

// Records on pages. Headings are never parted from the first record below them, and stand again at the top of the next
// page; a record is parted only where it is longer than a page.
class PageRecords {
public:
    // Draws from the top of the surface's first page on, in its font and sizes around it. Throws Error where there are
    // more pages than can be numbered.
    PageRecords(PageSurface& surface, RecordForm form);

    void BeginGroup(size_t level, const QString& heading);
    void PrintRecord(const Record& record);
    void EndGroup(size_t level, const QString& footer);
    // Writes the page strips too; `document` is the surface's.
    void Finish(const QString& closing, pages::Document& document);

private:
    struct OpenGroup {
        QString heading;
        // Its heading is on a page already.
        bool isShown = false;
    };
    struct ColumnPlace {
        int x = 0;
        int width = 0;
    };
    // How the page strips count the page.
    struct PageNumber {
        int section = 0;
        bool hasTitle = false;
    };

    pages::FontSpec Font(double points, bool bold = false, bool italic = false) const;
    void PlaceColumns();

    // Pages
    void StartPage(bool withTitle);
    void ContinuePage() { StartPage(false); }
    void StartRecord(int height);
    void DrawTitle();
    void DrawPageHeadings();
    void DrawColumnHeadings();
    void DrawInnerHeadings();
    void DrawHeading(size_t level);
    TextCell MakeHeading(size_t level);
    // Of the headings that are on no page yet.
    int InnerHeadingsHeight();
    bool Fits(int height) const { return y_ + height <= bottom_; }
    bool IsFresh() const { return y_ == bodyTop_; }

    // Records
    TextCell::Line EmptyLine();
    std::vector<TextCell> MakeRow(const Record& record, bool pageStart);
    std::vector<TextCell> MakeItem(const RecordItem& item, const RecordCell& cell);
    std::vector<TextCell> MakeDetails(const QStringList& lines);
    void DrawRow(const Record& record);
    void DrawItems(const Record& record);
    void DrawMarks(const Record& record);
    // Draws the cells side by side from the print position on, over as many pages as they need.
    void Flow(std::vector<TextCell>& cells);
    void DrawLine(const QString& text, const pages::FontSpec& font, int spaceAbove);

    // Strips
    void DrawStrips(pages::Document& document);
    void DrawStrip(pages::Document& document, pages::Page& page, const std::array<QString, 3>& texts, int y);

    PageSurface& surface_;
    RecordForm form_;
    pages::FontSpec font_;
    std::vector<ColumnPlace> columns_;
    std::vector<PageNumber> numbers_;
    std::vector<OpenGroup> open_;
    // Groups up to this one stand above the column headings.
    size_t pageGroups_ = 0;
    bool nextPage_ = true;
    int y_ = 0;
    int bodyTop_ = 0;
    int bottom_ = 0;
};

} // namespace velmora::print
