#include "print/TextWriter.h"

#include <algorithm>

namespace velmora::print {

using namespace Qt::StringLiterals;

namespace {
constexpr char lineEnd[] = "\r\n";
constexpr int ruleLength = 50;

// What would end the line or begin another column is a blank.
QString OnOneLine(QString text) {
    text.replace(u"\r\n"_s, u" "_s);
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c < u' '; }, QChar(u' '));
    return text;
}

QString CellText(const RecordColumn& column, const RecordCell& cell) {
    switch (column.kind) {
    case RecordColumn::Kind::Tick:
        return cell.ticked ? u"[x]"_s : u"[ ]"_s;
    case RecordColumn::Kind::Blank:
        return u"________"_s;
    case RecordColumn::Kind::Value:
        break;
    }
    if (cell.repeated) {
        return {};
    }
    const QString between = cell.value.isEmpty() || cell.below.isEmpty() ? QString() : u", "_s;
    return (cell.value + between + cell.below).simplified();
}

} // namespace

void TextWriter::AppendRule(char mark) {
    ReportText().append(ruleLength, mark).append(lineEnd);
}

void TextWriter::AppendLine(Text text) {
    Append(text);
    ReportText().append(lineEnd);
}

void TextWriter::AppendCell(Text cell) {
    ReportText().append('\t');
    Append(cell);
}

void TextWriter::PrintRule(qint16, qint16, qint16) {
    AppendRule();
}

void TextWriter::PrintReportTitle(Text title, Text subtitle, Text secondLine) {
    AppendRule();
    AppendRule();
    Append(title);
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

void TextWriter::PrintPairs(std::span<const LabelValue> pairs, PairWidth) {
    for (const LabelValue& pair : pairs) {
        AppendCell(pair.label);
        AppendCell(pair.value);
    }
    ReportText().append(lineEnd);
}

void TextWriter::PrintTableRow(std::span<const Text> cells, RowStyle style) {
    const bool isCut = style == RowStyle::Cut || style == RowStyle::CutHeading;
    for (const Text cell : cells) {
        AppendCell(isCut ? Text(OnOneLine(cell.toString())) : cell);
    }
    ReportText().append(lineEnd);
}

void TextWriter::BeginRecords(const RecordForm& form) {
    form_ = form;
    AppendLine(form_.title);
    PrintParagraph(form_.subtitle);
    AppendRule('=');
    QStringList headings;
    for (const RecordColumn& column : form_.columns) {
        headings += column.heading;
    }
    if (!headings.join(QString()).isEmpty()) {
        AppendLine(headings.join(u'\t'));
    }
}

void TextWriter::BeginGroup(size_t level, const QString& heading) {
    if (!heading.isEmpty() || (form_.groupsBeginPage[level] && hasRecords_)) {
        AppendRule();
    }
    PrintParagraph(heading);
}

void TextWriter::AppendItems(const Record& record) {
    for (size_t i = 0; i < form_.items.size(); ++i) {
        const RecordItem& item = form_.items[i];
        const QString& value = record.cells[i].value;
        switch (item.kind) {
        case RecordItem::Kind::Paragraph:
            PrintParagraph(value);
            break;
        case RecordItem::Kind::LabelValue:
            PrintParagraph(value.isEmpty() ? value : item.label + u'\t' + value);
            break;
        case RecordItem::Kind::Space:
            AppendLine({});
            break;
        case RecordItem::Kind::Rule:
            AppendRule();
            break;
        }
    }
}

void TextWriter::PrintRecord(const Record& record) {
    hasRecords_ = true;
    QStringList cells;
    for (size_t i = 0; i < form_.columns.size(); ++i) {
        cells += CellText(form_.columns[i], record.cells[i]);
    }
    if (!cells.isEmpty()) {
        AppendLine(cells.join(u'\t'));
    }
    AppendItems(record);
    for (const QString& line : record.details) {
        AppendLine(u"\t- "_s + line.simplified());
    }
}

void TextWriter::EndGroup(size_t, const QString& footer) {
    PrintParagraph(footer);
}

void TextWriter::EndRecords(const QString& closing) {
    AppendRule('=');
    PrintParagraph(closing);
    // The end of the last line is the file's.
    ReportText().chop(2);
}

} // namespace velmora::print
