#include "print/HtmlWriter.h"

#include "print/HtmlWrapper.h"

namespace velmora::print {

void HtmlWriter::Begin() {
    ReportText().append(ReadHtmlHeader());
}

void HtmlWriter::Finish() {
    ReportText().append(ReadHtmlFooter());
}

bool HtmlWriter::EndsWith(QByteArrayView tag) {
    const QByteArrayView text(ReportText());
    return text.size() >= tag.size() && text.last(tag.size()).compare(tag, Qt::CaseInsensitive) == 0;
}

void HtmlWriter::OpenHtmlTable() {
    if (!EndsWith("</td>") && !EndsWith("</th>") && !EndsWith("</tr>") && !EndsWith("<table>")) {
        Append("<table>");
    }
}

void HtmlWriter::CloseHtmlTable() {
    if (EndsWith("</td>") || EndsWith("</th>")) {
        Append("</tr>");
    }
    if (EndsWith("</tr>")) {
        Append("</table>");
    }
}

void HtmlWriter::AppendElement(const char* open, Text text, const char* close) {
    Append(open);
    AppendEscaped(ReportText(), text);
    Append(close);
}

void HtmlWriter::PrintRule(qint16, qint16, qint16) {
    CloseHtmlTable();
    Append("<hr>");
}

void HtmlWriter::PrintReportTitle(Text title, Text subtitle, Text secondLine) {
    CloseHtmlTable();
    AppendElement("<hr><H1>", title, ":  ");
    AppendElement("", subtitle, "</H1><BR><H2>");
    AppendElement("", secondLine, "</H2><BR><hr>");
}

void HtmlWriter::PrintSectionHeading(Text text, int) {
    CloseHtmlTable();
    // Crossed closing tags, as style sheets and scripts of existing sites know them.
    AppendElement("<hr><strong><em>", text, "</strong></em><br>");
}

void HtmlWriter::PrintParagraph(Text text) {
    if (!text.isEmpty()) {
        CloseHtmlTable();
        AppendElement("<p>", text, "</p>");
    }
}

void HtmlWriter::PrintLabelValue(Text label, Text value, std::optional<qint16>) {
    OpenHtmlTable();
    AppendElement("<tr><th>", label, "</th>");
    AppendElement("<td>", value, "</td></tr>");
}

void HtmlWriter::PrintWideLabelValue(Text label, Text value, std::optional<qint16>) {
    OpenHtmlTable();
    AppendElement("<tr><th colspan=\"2\">", label, "</th>");
    AppendElement("<td colspan=\"2\">", value, "</td></tr>");
}

void HtmlWriter::PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16>) {
    OpenHtmlTable();
    AppendElement("<tr><th>", label1, "</th>");
    AppendElement("<td>", value1, "</td>");
    AppendElement("<th>", label2, "</th>");
    AppendElement("<td>", value2, "</td></tr>");
}

void HtmlWriter::PrintTableRow(std::span<const Text> cells, RowStyle style) {
    const bool heading = style == RowStyle::CutHeading;
    OpenHtmlTable();
    Append("<tr>");
    for (const Text cell : cells) {
        AppendElement(heading ? "<th>" : "<td>", cell, heading ? "</th>" : "</td>");
    }
    Append("</tr>");
}

} // namespace velmora::print
