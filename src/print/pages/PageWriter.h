#pragma once

#include "print/JobState.h"
#include "print/ReportWriter.h"
#include "print/pages/PageSurface.h"

#include <functional>

namespace velmora::print {

// Where a report's pages are drawn and go.
struct PageTarget {
    PageGeometry geometry;
    pages::FontSpec font;
    // The most pages that the target takes; 0 for no limit.
    int pageLimit = 0;
    // A rule's thickness is divided by this: the preview draws them thinner.
    int ruleDivisor = 1;
    // Takes the finished pages. May be called again after a failure.
    std::function<void(const pages::Document& document)> deliver;
    // Called at each attempt to go beyond the limit; drawing goes on on the last page.
    std::function<void()> refusePage;
};

// Draws a report on pages, for printers, PDF files and the preview. A text that is wider than its column is wrapped
// inside the column, so that nothing overlaps; what takes more lines for that is given the room.
class PageWriter : public ReportWriter {
public:
    // The document is called by the first report title behind `documentName`.
    PageWriter(JobState& state, PageTarget target, const QString& documentName);

    int DeviceWidth() const override { return surface_.Width(); }
    int TextWidth(Text text) const override;
    void Begin() override {}
    void Finish() override {}
    void Deliver() override { target_.deliver(document_); }

    void NewPage() override;
    void EnsureRoom(qint16 lines) override;
    void AddVerticalSpace(qint16 dots) override { surface_.AddDots(dots); }
    void PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) override;
    void PrintReportTitle(Text title, Text subtitle, Text secondLine) override;
    void PrintSectionHeading(Text text, int x) override;
    void PrintParagraph(Text text) override;
    void PrintLabelValue(Text label, Text value, std::optional<qint16> style) override;
    void PrintWideLabelValue(Text label, Text value, std::optional<qint16> style) override;
    void PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16> style) override;
    void PrintTableRow(std::span<const Text> cells, RowStyle style) override;

private:
    using Lines = std::vector<QStringView>;
    // A label and its value, and where they stand. Lengths are twips.
    struct Pair {
        int label = 0;
        int value = 0;
        // Where the value's column ends.
        int right = 0;
        // Width of the label's box.
        int labelBox = 0;
        qint16 spaceBelow = 0;
        qint16 style = 0;
        QString labelText;
        QString valueText;
        // As WrapPair leaves them, the lines being views of the texts.
        pages::FontSpec valueFont;
        Lines labelLines;
        Lines valueLines;
    };
    struct Cell {
        int x = 0;
        QString text;
        // The text ends at the surface's right edge; `x` is then as far left as it may begin.
        bool endsAtRight = false;
        // As PlaceCells leaves them.
        int left = 0;
        Lines lines = {};
    };

    Pair MakePair(Text label, Text value, std::optional<qint16> style) const;
    Pair LeftPair(Text label, Text value, std::optional<qint16> style) const;
    Pair RightPair(Text label, Text value, std::optional<qint16> style) const;
    void WrapPair(Pair& pair);
    void EnsureRoomFor(std::initializer_list<const Pair*> pairs);
    void PrintPair(const Pair& pair);
    // The print position ends on the last line of the cell.
    void PrintLabelCell(const Pair& pair);
    void PrintValueCell(const Pair& pair);
    // Draws the cells of one row; the print position ends below the longest. `least` is the room that a row of one line
    // asks for.
    void PrintCells(std::vector<Cell> cells, qint16 least);
    void PrintWrappedRow(std::span<const Text> texts);
    void PrintIndentedRow(std::span<const Text> texts);
    void PrintCutRow(std::span<const Text> texts);
    // Counted from 0; the right edge behind the last one.
    int TabStop(size_t index) const;
    // Forgets empty cells and wraps each of the others before the next one.
    void PlaceCells(std::vector<Cell>& cells) const;
    // Draws lines below each other; the last is not ended.
    void PrintLines(const Lines& lines, int x);
    void PrintWrapped(QStringView text, int x);
    void Restyle(bool bold, bool italic, bool underline);

    JobState& state_;
    PageTarget target_;
    pages::Document document_;
    PageSurface surface_;
    // The document is called by its first title.
    bool titled_ = false;
};

} // namespace velmora::print
