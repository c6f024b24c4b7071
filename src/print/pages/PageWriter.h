#pragma once

#include "print/JobState.h"
#include "print/ReportWriter.h"
#include "print/pages/TextCell.h"

#include <memory>

namespace velmora::print {

// What a document's pages are drawn on.
struct PageTarget {
    PageGeometry geometry;
    pages::FontSpec font;
    // The most pages that the target takes; 0 for no limit.
    int pageLimit = 0;
    // A rule's thickness is divided by this: the preview draws them thinner.
    int ruleDivisor = 1;
};

// Draws a report on pages, for printers, PDF files and the preview. A text that is wider than its column is wrapped
// inside the column, so that nothing overlaps; what takes more lines for that is given the room.
class PageWriter : public ReportWriter {
public:
    // The document is called by its first title behind `documentName`.
    PageWriter(JobState& state, const PageTarget& target, const QString& documentName);

    // As they are drawn so far.
    const pages::Document& Pages() const { return document_; }

    int DeviceWidth() const override { return surface_.Width(); }
    int TextWidth(Text text) const override;

    void NewPage() override;
    void EnsureRoom(qint16 lines) override;
    void AddVerticalSpace(qint16 dots) override { surface_.AddDots(dots); }
    void PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) override;
    void PrintReportTitle(Text title, Text subtitle, Text secondLine) override;
    void PrintSectionHeading(Text text, int x) override;
    void PrintParagraph(Text text) override;
    void PrintPairs(std::span<const LabelValue> pairs, PairWidth width) override;
    void PrintTableRow(std::span<const Text> cells, RowStyle style) override;
    void BeginRecords(const RecordForm& form) override;
    void BeginGroup(size_t level, const QString& heading) override;
    void PrintRecord(const Record& record) override;
    void EndGroup(size_t level, const QString& footer) override;
    void EndRecords(const QString& closing) override;

protected:
    // Called at each attempt to go beyond the target's limit; drawing goes on on the last page.
    virtual void RefusePage() {}

private:
    struct Pair {
        TextCell label;
        TextCell value;
        qint16 style = 0;
    };
    struct Cell {
        int x = 0;
        QString text;
        // The text ends at the surface's right edge; `x` is then as far left as it may begin.
        bool endsAtRight = false;
        // As PlaceCells leaves it.
        TextCell wrapped = {};
    };

    // The first title names the document.
    void Name(const QString& title);
    // Wrapped between where they stand and the right end of the value's column.
    Pair MakePair(const LabelValue& texts, int labelX, int valueX, int right);
    std::vector<Pair> PlacePairs(std::span<const LabelValue> texts, PairWidth width);
    void PrintPair(Pair& pair, int labelBox, qint16 spaceBelow);
    // The print position ends on the last line of the cell.
    void PrintLabelCell(Pair& pair, int boxWidth);
    void PrintValueCell(Pair& pair);
    // Draws the cells of one row; the print position ends below the longest. `least` is the room that a row of one line
    // asks for.
    void PrintCells(std::vector<Cell> cells, qint16 least);
    // Forgets empty cells and wraps each of the others before the next one.
    void PlaceCells(std::vector<Cell>& cells);
    void PrintWrappedRow(std::span<const Text> texts);
    void PrintIndentedRow(std::span<const Text> texts);
    void PrintCutRow(std::span<const Text> texts);
    // Counted from 0; the right edge behind the last one.
    int TabStop(size_t index) const;
    // The text in the current font, wrapped from `x` to the right edge.
    TextCell Wrapped(const QString& text, int x);
    // Draws all lines from the height of the print position on, which ends on the last of them.
    void PrintCell(TextCell& cell);
    void PrintWrapped(const QString& text, int x);
    void Restyle(bool bold, bool italic, bool underline);

    JobState& state_;
    PageTarget target_;
    pages::Document document_;
    PageSurface surface_;
    bool titled_ = false;
    std::unique_ptr<ReportWriter> records_;
};

} // namespace velmora::print
