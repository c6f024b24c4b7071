#include "data/Configuration.h"
#include "data/Helpers.h"
#include "print/TextWriter.h"

#include <algorithm>

namespace velmora::print {

namespace {

// What a site puts before and behind every HTML report, byte for byte; empty when there is no such file.
QByteArray ReadHtmlHeader() {
    return ReadFileBytes(DataDirectory() + QStringLiteral("\\htmlpre.txt"));
}

QByteArray ReadHtmlFooter() {
    return ReadFileBytes(DataDirectory() + QStringLiteral("\\htmlpost.txt"));
}

const char* NameOf(Alignment alignment) {
    switch (alignment) {
    case Alignment::Center:
        return "center";
    case Alignment::Right:
        return "right";
    case Alignment::Left:
        break;
    }
    return "left";
}

// A style of its own, so that the wrapper's rules for tables of labels leave it alone.
QByteArray AlignedCell(const RecordColumn& column) {
    return column.alignment == Alignment::Left
               ? QByteArray("<td>")
               : QByteArray("<td style=\"text-align:") + NameOf(column.alignment) + "\">";
}

class HtmlWriter : public PagelessWriter {
public:
    using PagelessWriter::PagelessWriter;

    void Begin() override { ReportText().append(ReadHtmlHeader()); }

    void Finish() override { ReportText().append(ReadHtmlFooter()); }

    void PrintRule(qint16, qint16, qint16) override {
        CloseHtmlTable();
        Append("<hr>");
    }

    void PrintReportTitle(Text title, Text subtitle, Text secondLine) override {
        CloseHtmlTable();
        AppendElement("<hr><H1>", title, ":  ");
        AppendElement("", subtitle, "</H1><BR><H2>");
        AppendElement("", secondLine, "</H2><BR><hr>");
    }

    void PrintSectionHeading(Text text, int) override {
        CloseHtmlTable();
        // Crossed closing tags, as style sheets and scripts of existing sites know them.
        AppendElement("<hr><strong><em>", text, "</strong></em><br>");
    }

    void PrintParagraph(Text text) override {
        if (!text.isEmpty()) {
            CloseHtmlTable();
            AppendElement("<p>", text, "</p>");
        }
    }

    void PrintPairs(std::span<const LabelValue> pairs, PairWidth width) override {
        const bool wide = width == PairWidth::Wide;
        OpenHtmlTable();
        Append("<tr>");
        for (const LabelValue& pair : pairs) {
            AppendElement(wide ? "<th colspan=\"2\">" : "<th>", pair.label, "</th>");
            AppendElement(wide ? "<td colspan=\"2\">" : "<td>", pair.value, "</td>");
        }
        Append("</tr>");
    }

    void PrintTableRow(std::span<const Text> cells, RowStyle style) override {
        const bool heading = style == RowStyle::CutHeading;
        OpenHtmlTable();
        Append("<tr>");
        for (const Text cell : cells) {
            AppendElement(heading ? "<th>" : "<td>", cell, heading ? "</th>" : "</td>");
        }
        Append("</tr>");
    }

    void BeginRecords(const RecordForm& form) override {
        form_ = form;
        AppendLines("<h1>", form_.title, "</h1>\r\n");
        AppendBlock("<p>", form_.subtitle, "</p>\r\n");
    }

    void BeginGroup(size_t level, const QString& heading) override {
        CloseRecords();
        // The groups within it begin with it. What the browser prints breaks where the pages do.
        const auto first = form_.groupsBeginPage.begin() + static_cast<std::ptrdiff_t>(level);
        const bool startsPage =
            !isPageStart_ && std::find(first, form_.groupsBeginPage.end(), true) != form_.groupsBeginPage.end();
        const QByteArray style = startsPage ? " style=\"break-before:page\">" : ">";
        if (!heading.isEmpty()) {
            const QByteArray name = level == 0 ? "h2" : "h3";
            AppendLines('<' + name + style, heading, "");
            ReportText() += "</" + name + ">\r\n";
        } else if (startsPage) {
            ReportText() += "<hr" + style + "\r\n";
        }
        isPageStart_ = isPageStart_ || startsPage;
    }

    void PrintRecord(const Record& record) override {
        isPageStart_ = false;
        if (!form_.columns.empty()) {
            OpenRecords();
            ReportText() += "<tr>";
            for (size_t i = 0; i < form_.columns.size(); ++i) {
                AppendCell(form_.columns[i], record.cells[i]);
            }
            ReportText() += "</tr>\r\n";
        } else {
            for (size_t i = 0; i < form_.items.size(); ++i) {
                AppendItem(form_.items[i], record.cells[i].value);
            }
            CloseRecords();
        }
        AppendDetails(record.details);
    }

    void EndGroup(size_t, const QString& footer) override {
        CloseRecords();
        AppendBlock("<p><b>", footer, "</b></p>\r\n");
    }

    void EndRecords(const QString& closing) override {
        CloseRecords();
        AppendBlock("<p><b>", closing, "</b></p>\r\n");
    }

private:
    void Append(const char* markup) { ReportText() += markup; }
    // With "&", "<" and ">" as HTML entities, and nothing else changed.
    void AppendEscaped(Text text) {
        ReportText() += text.toString().toUtf8().replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
    }

    bool EndsWith(QByteArrayView tag) {
        const QByteArrayView text(ReportText());
        return text.size() >= tag.size() && text.last(tag.size()).compare(tag, Qt::CaseInsensitive) == 0;
    }

    // Both look at the end of the text alone, letter case ignored, so that a wrapper file may open a table too.
    void OpenHtmlTable() {
        if (!EndsWith("</td>") && !EndsWith("</th>") && !EndsWith("</tr>") && !EndsWith("<table>")) {
            Append("<table>");
        }
    }

    void CloseHtmlTable() {
        if (EndsWith("</td>") || EndsWith("</th>")) {
            Append("</tr>");
        }
        if (EndsWith("</tr>")) {
            Append("</table>");
        }
    }

    void AppendElement(const char* open, Text text, const char* close) {
        Append(open);
        AppendEscaped(text);
        Append(close);
    }

    // The same with the line ends of the text kept.
    void AppendLines(const QByteArray& open, const QString& text, const char* close) {
        ReportText() += open;
        // Texts of several lines keep them.
        const QStringList lines = text.split(u'\n');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            ReportText() += i > 0 ? "<br>" : "";
            AppendEscaped(lines[i].endsWith(u'\r') ? lines[i].chopped(1) : lines[i]);
        }
        ReportText() += close;
    }

    // Nothing for an empty text.
    void AppendBlock(const char* open, const QString& text, const char* close) {
        if (!text.isEmpty()) {
            AppendLines(open, text, close);
        }
    }

    void OpenRecords() {
        if (tableIsOpen_) {
            return;
        }
        tableIsOpen_ = true;
        ReportText() += "<table>\r\n";
        if (form_.columns.empty()) {
            return;
        }
        double sum = 0;
        for (const RecordColumn& column : form_.columns) {
            sum += column.width;
        }
        ReportText() += "<tr>";
        for (const RecordColumn& column : form_.columns) {
            const QByteArray width = QByteArray::number(column.width * 100 / std::max(sum, 1.0), 'f', 1);
            AppendLines("<th style=\"width:" + width + "%;text-align:" + NameOf(column.alignment) + "\">",
                        column.heading, "</th>");
        }
        ReportText() += "</tr>\r\n";
    }

    void CloseRecords() {
        ReportText() += tableIsOpen_ ? "</table>\r\n" : "";
        tableIsOpen_ = false;
    }

    void AppendCell(const RecordColumn& column, const RecordCell& cell) {
        switch (column.kind) {
        case RecordColumn::Kind::Tick:
            ReportText() += cell.ticked ? "<td>&#9745;</td>" : "<td>&#9744;</td>";
            return;
        case RecordColumn::Kind::Blank:
            ReportText() += "<td>&nbsp;</td>";
            return;
        case RecordColumn::Kind::Value:
            break;
        }
        ReportText() += AlignedCell(column);
        if (!cell.repeated) {
            AppendBlock(column.bold ? "<b>" : "", cell.value, column.bold ? "</b>" : "");
            AppendBlock(cell.value.isEmpty() ? "<small>" : "<br><small>", cell.below, "</small>");
        }
        ReportText() += "</td>";
    }

    void AppendItem(const RecordItem& item, const QString& value) {
        const bool hasText = item.kind == RecordItem::Kind::Paragraph || item.kind == RecordItem::Kind::LabelValue;
        if (hasText && value.isEmpty()) {
            return;
        }
        // Labels below each other are one table, which lines their values up.
        if (item.kind == RecordItem::Kind::LabelValue) {
            OpenRecords();
            AppendLines("<tr><th align=\"left\">", item.label, "</th>");
            AppendLines("<td>", value, "</td></tr>\r\n");
            return;
        }
        CloseRecords();
        if (item.kind == RecordItem::Kind::Paragraph) {
            AppendLines(item.bold ? "<p><b>" : "<p>", value, item.bold ? "</b></p>\r\n" : "</p>\r\n");
        } else if (item.kind == RecordItem::Kind::Rule) {
            ReportText() += "<hr>\r\n";
        }
    }

    void AppendDetails(const QStringList& lines) {
        if (lines.isEmpty()) {
            return;
        }
        const auto columns = std::max<qsizetype>(static_cast<qsizetype>(form_.columns.size()) - 1, 1);
        ReportText() +=
            form_.columns.empty() ? "<ul>" : "<tr><td></td><td colspan=\"" + QByteArray::number(columns) + "\"><ul>";
        for (const QString& line : lines) {
            AppendLines("<li>", line, "</li>");
        }
        ReportText() += form_.columns.empty() ? "</ul>\r\n" : "</ul></td></tr>\r\n";
    }

    RecordForm form_;
    bool tableIsOpen_ = false;
    // No record stands on the page yet that the next one would be printed on.
    bool isPageStart_ = true;
};

} // namespace

std::unique_ptr<ReportWriter> MakeHtmlWriter(JobState& state, int width, DocumentSink& sink) {
    return std::make_unique<HtmlWriter>(state, width, sink);
}

} // namespace velmora::print
