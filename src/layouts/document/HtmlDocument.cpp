#include "layouts/document/HtmlDocument.h"

#include "print/HtmlWrapper.h"
#include "print/Text.h"

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

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
QByteArray AlignedCell(const LayoutColumn& column) {
    return column.alignment == Alignment::Left
               ? QByteArray("<td>")
               : QByteArray("<td style=\"text-align:") + NameOf(column.alignment) + "\">";
}

} // namespace

void HtmlDocument::AppendElement(const QByteArray& open, const QString& text, const char* close) {
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
    html_ += "<table>\r\n";
    if (layout_.columns.empty()) {
        return;
    }
    double sum = 0;
    for (const LayoutColumn& column : layout_.columns) {
        sum += column.width;
    }
    html_ += "<tr>";
    for (const LayoutColumn& column : layout_.columns) {
        const QByteArray width = QByteArray::number(column.width * 100 / std::max(sum, 1.0), 'f', 1);
        AppendElement("<th style=\"width:" + width + "%;text-align:" + NameOf(column.alignment) + "\">", column.heading,
                      "</th>");
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
    // The groups within it begin with it. What the browser prints breaks where the pages do.
    const bool startsPage = std::any_of(layout_.groups.begin() + static_cast<std::ptrdiff_t>(level),
                                        layout_.groups.end(), [](const LayoutGroup& group) { return group.newPage; }) &&
                            !isPageStart_;
    const QByteArray style = startsPage ? " style=\"break-before:page\">" : ">";
    if (!heading.isEmpty()) {
        const QByteArray name = level == 0 ? "h2" : "h3";
        AppendElement('<' + name + style, heading, "");
        html_ += "</" + name + ">\r\n";
    } else if (startsPage) {
        html_ += "<hr" + style + "\r\n";
    }
    isPageStart_ = isPageStart_ || startsPage;
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
    html_ += AlignedCell(column);
    if (!cell.repeated) {
        if (!cell.value.isEmpty()) {
            AppendElement(column.bold ? "<b>" : "", cell.value, column.bold ? "</b>" : "");
        }
        if (!cell.below.isEmpty()) {
            AppendElement(cell.value.isEmpty() ? "<small>" : "<br><small>", cell.below, "</small>");
        }
    }
    html_ += "</td>";
}

void HtmlDocument::AppendBody(const FilledRecord& record) {
    for (size_t i = 0; i < layout_.body.size(); ++i) {
        AppendBodyItem(layout_.body[i], record.cells[i].value);
    }
    CloseTable();
}

void HtmlDocument::AppendBodyItem(const BodyItem& item, const QString& value) {
    const bool hasText = item.kind == BodyItem::Kind::Text || item.kind == BodyItem::Kind::LabelValue;
    if (hasText && value.isEmpty()) {
        return;
    }
    // Labels below each other are one table, which lines their values up.
    if (item.kind == BodyItem::Kind::LabelValue) {
        OpenTable();
        AppendElement("<tr><th align=\"left\">", item.label, "</th>");
        AppendElement("<td>", value, "</td></tr>\r\n");
        return;
    }
    CloseTable();
    if (item.kind == BodyItem::Kind::Text) {
        AppendElement(item.bold ? "<p><b>" : "<p>", value, item.bold ? "</b></p>\r\n" : "</p>\r\n");
    } else if (item.kind == BodyItem::Kind::Rule) {
        html_ += "<hr>\r\n";
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
    isPageStart_ = false;
    if (!layout_.columns.empty()) {
        OpenTable();
        html_ += "<tr>";
        for (size_t i = 0; i < layout_.columns.size(); ++i) {
            AppendCell(layout_.columns[i], record.cells[i]);
        }
        html_ += "</tr>\r\n";
    } else {
        AppendBody(record);
    }
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
