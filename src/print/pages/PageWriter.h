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

// Draws a report on pages, for printers, PDF files and the preview.
class PageWriter : public ReportWriter {
public:
    PageWriter(JobState& state, PageTarget target, const QString& documentName);

    int DeviceWidth() const override { return surface_.Width(); }
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
    void PrintTableRow(Text c1, Text c2, Text c3, Text c4) override;
    void PrintTableRow5(Text c0, Text c1, Text c2, Text c3, Text c4) override;

private:
    struct Pair {
        int label = 0; // left edges
        int value = 0;
        int right = 0;    // where the value's column ends
        int labelBox = 0; // width of the label's box
        qint16 spaceBelow = 0;
    };
    struct Cell {
        int x = 0;
        QString text;
        bool endsAtRight = false;
    };

    Pair LeftPair(int right) const;
    Pair RightPair() const;
    qint16 StyleOf(const QString& label, std::optional<qint16> style) const;
    void PrintPair(const QString& label, const QString& value, qint16 style, const Pair& pair);
    void PrintLabelCell(const QString& label, const Pair& pair);
    void PrintValueCell(const QString& value, qint16 style, const Pair& pair);
    // Draws the cells of one row, each wrapped before the next one; the print position ends below the longest.
    void PrintCells(const std::vector<Cell>& cells);
    void PrintWrapped(QStringView text, int x, int right);
    void Restyle(bool bold, bool italic, bool underline);
    bool HasRoom(int lines) const;

    JobState& state_;
    PageTarget target_;
    pages::Document document_;
    PageSurface surface_;
};

} // namespace velmora::print
