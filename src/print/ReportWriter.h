#pragma once

#include "print/Text.h"

#include <optional>
#include <span>

namespace velmora::print {

// How the cells of a table row stand on pages.
enum class RowStyle {
    // The first at the left edge, each other one at its tab stop, wrapped before the next one. The last one ends at the
    // right edge where it would run over it. Not bold.
    Wrapped,
    // As above, but from the first tab stop on; the last always ends at the right edge.
    Indented,
    // Each cell ends at its tab stop, where the next one begins: one line high, what does not fit or stands behind a
    // line end is cut. Targets without pages write the whole texts.
    Cut,
    // The same in bold letters.
    CutHeading
};

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

    // Any number of cells, of which there are at most as many as tab stops, and one more in a wrapped row.
    virtual void PrintTableRow(std::span<const Text> cells, RowStyle style) = 0;

protected:
    ReportWriter() = default;
};

} // namespace velmora::print
