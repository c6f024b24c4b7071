#pragma once

#include "print/Text.h"

#include <optional>
#include <vector>

namespace velmora::print {

// One cell of a printed grid: its text, and the width of its column in twips.
struct GridCell {
    QString text;
    int width = 0;
};

enum class GridRow { Heading, Record };

// One report on its way to one kind of target: each layout operation, written or drawn as that target has it. The job
// opens it with Begin, lays the report out, closes it with Finish and hands it over with Deliver.
//
// Positions and widths are twips, vertical amounts printer dots; only pages heed them. Every text is a value to show,
// never markup.
class ReportWriter {
public:
    virtual ~ReportWriter() = default;
    ReportWriter(const ReportWriter&) = delete;
    ReportWriter& operator=(const ReportWriter&) = delete;

    // Full width of the surface that the tab stops divide.
    virtual int DeviceWidth() const = 0;
    // Width of a text in the current font, its widest line's when it has several; 0 where text has no width.
    virtual int TextWidth(Text text) const = 0;

    virtual void Begin() = 0;
    // Writes what stands behind the report's last line.
    virtual void Finish() = 0;
    // Hands the finished report to its destination. May be repeated after a failure.
    virtual void Deliver() = 0;

    virtual void NewPage() = 0;
    // Breaks the page when that many lines no longer fit below the print position.
    virtual void EnsureRoom(qint16 lines) = 0;
    virtual void AddVerticalSpace(qint16 dots) = 0;
    virtual void PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) = 0;

    virtual void PrintReportTitle(Text title, Text subtitle, Text secondLine) = 0;
    virtual void PrintSectionHeading(Text text, int x) = 0;
    // Nothing at all for an empty text.
    virtual void PrintParagraph(Text text) = 0;

    // Without a style the label's own one counts, as the table of print attributes has it.
    virtual void PrintLabelValue(Text label, Text value, std::optional<qint16> style) = 0;
    virtual void PrintWideLabelValue(Text label, Text value, std::optional<qint16> style) = 0;
    // Both pairs on one line; the style is the second pair's.
    virtual void PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2,
                                     std::optional<qint16> style) = 0;

    virtual void PrintTableRow(Text c1, Text c2, Text c3, Text c4) = 0;
    virtual void PrintTableRow5(Text c0, Text c1, Text c2, Text c3, Text c4) = 0;

    // The cells of one row of a grid beside each other, one line high. Pages cut what does not fit its column or is
    // behind a line end; the other targets write the whole texts.
    virtual void PrintGridRow(const std::vector<GridCell>& cells, GridRow kind) = 0;

protected:
    ReportWriter() = default;
};

} // namespace velmora::print
