#include "layouts/document/TextDocument.h"

#include "print/Text.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype ruleLength = 50;

QString CellText(const LayoutColumn& column, const FilledCell& cell) {
    switch (column.kind) {
    case LayoutColumn::Kind::Tick:
        return cell.ticked ? u"[x]"_s : u"[ ]"_s;
    case LayoutColumn::Kind::Blank:
        return u"________"_s;
    case LayoutColumn::Kind::Text:
        break;
    }
    if (cell.repeated) {
        return {};
    }
    const QString between = cell.value.isEmpty() || cell.below.isEmpty() ? QString() : u", "_s;
    return (cell.value + between + cell.below).simplified();
}

} // namespace

void TextDocument::AppendLine(const QString& line) {
    print::AppendUtf8(text_, line);
    text_ += "\r\n";
}

void TextDocument::Begin(const SpecialTexts& specials) {
    AppendLine(layout_.title.Fill({nullptr, specials, locale_}));
    const QString subtitle = layout_.subtitle.Fill({nullptr, specials, locale_});
    if (!subtitle.isEmpty()) {
        AppendLine(subtitle);
    }
    AppendLine(QString(ruleLength, u'='));
    QStringList headings;
    for (const LayoutColumn& column : layout_.columns) {
        headings += column.heading;
    }
    if (!headings.join(QString()).isEmpty()) {
        AppendLine(headings.join(u'\t'));
    }
}

void TextDocument::BeginGroup(size_t level, const QString& heading) {
    if (!heading.isEmpty() || (layout_.groups[level].newPage && hasRecords_)) {
        AppendLine(QString(ruleLength, u'-'));
    }
    if (!heading.isEmpty()) {
        AppendLine(heading);
    }
}

void TextDocument::AppendBody(const FilledRecord& record) {
    for (size_t i = 0; i < layout_.body.size(); ++i) {
        const BodyItem& item = layout_.body[i];
        const QString& value = record.cells[i].value;
        switch (item.kind) {
        case BodyItem::Kind::Text:
            if (!value.isEmpty()) {
                AppendLine(value);
            }
            break;
        case BodyItem::Kind::LabelValue:
            if (!value.isEmpty()) {
                AppendLine(item.label + u'\t' + value);
            }
            break;
        case BodyItem::Kind::Space:
            AppendLine({});
            break;
        case BodyItem::Kind::Rule:
            AppendLine(QString(ruleLength, u'-'));
            break;
        }
    }
}

void TextDocument::Record(const FilledRecord& record) {
    hasRecords_ = true;
    QStringList cells;
    for (size_t i = 0; i < layout_.columns.size(); ++i) {
        cells += CellText(layout_.columns[i], record.cells[i]);
    }
    if (!cells.isEmpty()) {
        AppendLine(cells.join(u'\t'));
    }
    AppendBody(record);
    for (const QString& line : record.details) {
        AppendLine(u"\t- "_s + line.simplified());
    }
}

void TextDocument::EndGroup(size_t, const QString& footer) {
    if (!footer.isEmpty()) {
        AppendLine(footer);
    }
}

void TextDocument::Finish(const QString& closing) {
    AppendLine(QString(ruleLength, u'='));
    if (!closing.isEmpty()) {
        AppendLine(closing);
    }
    text_.chop(2);
}

} // namespace velmora::layouts
