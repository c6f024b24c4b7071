#include "layouts/document/HtmlDocument.h"

#include "print/HtmlWrapper.h"
#include "print/Text.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

const char* AlignedCell(Alignment alignment) {
    switch (alignment) {
    case Alignment::Center:
        return "<td align=\"center\">";
    case Alignment::Right:
        return "<td align=\"right\">";
    case Alignment::Left:
        break;
    }
    return "<td>";
}

} // namespace

void HtmlDocument::AppendElement(const char* open, const QString& text, const char* close) {
    html_ += open;
    // Texts of several lines keep them.
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        html_ += i > 0 ? "<br>" : "";
        print::AppendEscaped(html_, lines[i].endsWith(u'\r') ? lines[i].chopped(1) : lines[i]);
    }
    html_ += close;
}

void HtmlDocument::OpenTable() {
    if (tableIsOpen_) {
        return;
    }
    tableIsOpen_ = true;
    html_ += "<table>\r\n<tr>";
    for (const LayoutColumn& column : layout_.columns) {
        AppendElement("<th align=\"left\">", column.heading, "</th>");
    }
    html_ += "</tr>\r\n";
}

void HtmlDocument::CloseTable() {
    html_ += tableIsOpen_ ? "</table>\r\n" : "";
    tableIsOpen_ = false;
}

void HtmlDocument::Begin(const SpecialTexts& specials) {
    html_ += print::ReadHtmlHeader();
    AppendElement("<h1>", layout_.title.Fill({nullptr, specials, locale_}), "</h1>\r\n");
    const QString subtitle = layout_.subtitle.Fill({nullptr, specials, locale_});
    if (!subtitle.isEmpty()) {
        AppendElement("<p>", subtitle, "</p>\r\n");
    }
}

void HtmlDocument::BeginGroup(size_t level, const QString& heading) {
    CloseTable();
    if (!heading.isEmpty()) {
        level == 0 ? AppendElement("<h2>", heading, "</h2>\r\n") : AppendElement("<h3>", heading, "</h3>\r\n");
    } else if (layout_.groups[level].newPage) {
        html_ += "<hr>\r\n";
    }
}

void HtmlDocument::AppendCell(const LayoutColumn& column, const FilledCell& cell) {
    switch (column.kind) {
    case LayoutColumn::Kind::Tick:
        html_ += cell.ticked ? "<td>&#9745;</td>" : "<td>&#9744;</td>";
        return;
    case LayoutColumn::Kind::Blank:
        html_ += "<td>&nbsp;</td>";
        return;
    case LayoutColumn::Kind::Text:
        break;
    }
    AppendElement(AlignedCell(column.alignment), cell.repeated ? QString() : cell.value, "");
    if (!cell.below.isEmpty() && !cell.repeated) {
        AppendElement(cell.value.isEmpty() ? "<small>" : "<br><small>", cell.below, "</small>");
    }
    html_ += "</td>";
}

void HtmlDocument::AppendBody(const FilledRecord& record) {
    for (size_t i = 0; i < layout_.body.size(); ++i) {
        const BodyItem& item = layout_.body[i];
        const QString& value = record.cells[i].value;
        switch (item.kind) {
        case BodyItem::Kind::Text:
            item.bold ? AppendElement("<p><b>", value, "</b></p>\r\n") : AppendElement("<p>", value, "</p>\r\n");
            break;
        case BodyItem::Kind::LabelValue:
            if (!value.isEmpty()) {
                AppendElement("<p><b>", item.label, "</b> ");
                AppendElement("", value, "</p>\r\n");
            }
            break;
        case BodyItem::Kind::Rule:
            html_ += "<hr>\r\n";
            break;
        case BodyItem::Kind::Space:
            break;
        }
    }
}

void HtmlDocument::AppendDetails(const QStringList& lines) {
    if (lines.isEmpty()) {
        return;
    }
    const auto columns = std::max<qsizetype>(static_cast<qsizetype>(layout_.columns.size()) - 1, 1);
    html_ += layout_.columns.empty() ? "<ul>" : "<tr><td></td><td colspan=\"" + QByteArray::number(columns) + "\"><ul>";
    for (const QString& line : lines) {
        AppendElement("<li>", line, "</li>");
    }
    html_ += layout_.columns.empty() ? "</ul>\r\n" : "</ul></td></tr>\r\n";
}

void HtmlDocument::Record(const FilledRecord& record) {
    if (!layout_.columns.empty()) {
        OpenTable();
        html_ += "<tr>";
        for (size_t i = 0; i < layout_.columns.size(); ++i) {
            AppendCell(layout_.columns[i], record.cells[i]);
        }
        html_ += "</tr>\r\n";
    }
    AppendBody(record);
    AppendDetails(record.details);
}

void HtmlDocument::EndGroup(size_t, const QString& footer) {
    CloseTable();
    if (!footer.isEmpty()) {
        AppendElement("<p><b>", footer, "</b></p>\r\n");
    }
}

void HtmlDocument::Finish(const QString& closing) {
    CloseTable();
    if (!closing.isEmpty()) {
        AppendElement("<p><b>", closing, "</b></p>\r\n");
    }
    html_ += print::ReadHtmlFooter();
}

} // namespace velmora::layouts
