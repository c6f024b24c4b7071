#include "print/TextWriter.h"

#include <algorithm>
#include <array>

namespace velmora::print {

using namespace Qt::StringLiterals;

namespace {
constexpr char lineEnd[] = "\r\n";
constexpr int ruleLength = 50;
} // namespace

void TextWriter::AppendRule() {
    ReportText().append(ruleLength, '-').append(lineEnd);
}

void TextWriter::AppendLine(Text text) {
    AppendUtf8(ReportText(), text);
    ReportText().append(lineEnd);
}

void TextWriter::AppendCells(std::span<const Text> cells) {
    for (const Text cell : cells) {
        AppendCell(cell);
    }
    ReportText().append(lineEnd);
}

void TextWriter::AppendCell(Text cell) {
    ReportText().append('\t');
    AppendUtf8(ReportText(), cell);
}

void TextWriter::PrintRule(qint16, qint16, qint16) {
    AppendRule();
}

void TextWriter::PrintReportTitle(Text title, Text subtitle, Text secondLine) {
    AppendRule();
    AppendRule();
    AppendUtf8(ReportText(), title);
    ReportText().append('\t');
    AppendLine(subtitle);
    AppendLine(secondLine);
    AppendRule();
    AppendRule();
}

void TextWriter::PrintSectionHeading(Text text, int) {
    AppendRule();
    AppendLine(text);
}

void TextWriter::PrintParagraph(Text text) {
    if (!text.isEmpty()) {
        AppendLine(text);
    }
}

void TextWriter::PrintLabelValue(Text label, Text value, std::optional<qint16>) {
    AppendCells(std::array{label, value});
}

void TextWriter::PrintWideLabelValue(Text label, Text value, std::optional<qint16>) {
    AppendCells(std::array{label, value});
}

void TextWriter::PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16>) {
    AppendCells(std::array{label1, value1, label2, value2});
}

void TextWriter::PrintTableRow(std::span<const Text> cells, RowStyle style) {
    if (style == RowStyle::Wrapped || style == RowStyle::Indented) {
        AppendCells(cells);
        return;
    }
    // What would end the line or begin another column is a blank: a row stays one line.
    for (const Text cell : cells) {
        QString text = cell.toString();
        text.replace(u"\r\n"_s, u" "_s);
        std::replace_if(
            text.begin(), text.end(), [](QChar c) { return c < u' '; }, QChar(u' '));
        AppendCell(text);
    }
    ReportText().append(lineEnd);
}

} // namespace velmora::print
