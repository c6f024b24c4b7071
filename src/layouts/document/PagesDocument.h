#pragma once

#include "base/services/Printers.h"
#include "layouts/document/DocumentWriter.h"
#include "layouts/document/TextCells.h"
#include "print/pages/PageSurface.h"

namespace velmora::layouts {

// Pages for printers, PDF files and the preview. Headings are never parted from the first record below them, and stand
// again at the top of the next page; a record is parted only where it is longer than a page.
class PagesDocument : public DocumentWriter {
public:
    // `page` is the paper in the layout's orientation, `family` the font's name.
    PagesDocument(const Layout& layout, const LocaleText& locale, const PrinterPage& page, const QString& family,
                  const QString& documentName);

    void Begin(const SpecialTexts& specials) override;
    void BeginGroup(size_t level, const QString& heading) override;
    void Record(const FilledRecord& record) override;
    void EndGroup(size_t level, const QString& footer) override;
    void Finish(const QString& closing) override;

    const pages::Document& Pages() const { return document_; }

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
    std::vector<TextCell> MakeRow(const FilledRecord& record, bool pageStart);
    std::vector<TextCell> MakeBodyItem(const BodyItem& item, const FilledCell& cell);
    std::vector<TextCell> MakeDetails(const QStringList& lines);
    void DrawRow(const FilledRecord& record);
    void DrawBody(const FilledRecord& record);
    void DrawMarks(const FilledRecord& record);
    // Draws the cells side by side from the print position on, over as many pages as they need.
    void Flow(std::vector<TextCell>& cells);
    void DrawLine(const QString& text, const pages::FontSpec& font, int spaceAbove);

    // Strips
    void DrawStrips();
    void DrawStrip(pages::Page& page, const PageStrip& strip, int y);

    const Layout& layout_;
    const LocaleText& locale_;
    SpecialTexts specials_;
    QString family_;
    QString name_;
    pages::Document document_;
    print::PageSurface surface_;
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

} // namespace velmora::layouts
