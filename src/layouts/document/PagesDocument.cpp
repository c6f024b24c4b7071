#include "layouts/document/PagesDocument.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "platform/pages/PageFont.h"

#include <algorithm>
#include <cmath>

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerInch = 1440;
constexpr int twipsPerPoint = 20;
constexpr int columnGap = 140;
constexpr int rowPadding = 60;
constexpr int paddingWithoutLines = 35;
constexpr int detailIndent = 160;
constexpr int spaceAboveHeading = 80;
constexpr int spaceBelowHeading = 60;
constexpr int thinRule = 6;
constexpr int headingRule = 14;
constexpr int titleRule = 30;
constexpr size_t mostHeadingLines = 3;
// What the preview can number.
constexpr int mostPages = 32000;

print::PageGeometry GeometryOf(const PrinterPage& page, double marginInches) {
    print::PageGeometry geometry;
    geometry.paperWidth = page.paperWidth;
    geometry.paperHeight = page.paperHeight;
    // On a label's paper margins must not leave less than half of it.
    const int margin = std::min(
        {static_cast<int>(std::lround(marginInches * twipsPerInch)), page.paperWidth / 4, page.paperHeight / 4});
    geometry.left = std::max(page.left, margin);
    geometry.top = std::max(page.top, margin);
    geometry.width = page.paperWidth - geometry.left - std::max(page.paperWidth - page.left - page.width, margin);
    geometry.height = page.paperHeight - geometry.top - std::max(page.paperHeight - page.top - page.height, margin);
    geometry.twipsPerDot = 1;
    geometry.twipsPerPen = 1;
    return geometry;
}

int TallestCell(const std::vector<TextCell>& cells) {
    int height = 0;
    for (const TextCell& cell : cells) {
        height = std::max(height, cell.Height());
    }
    return height;
}

} // namespace

PagesDocument::PagesDocument(const Layout& layout, const LocaleText& locale, const PrinterPage& page,
                             const QString& family, const QString& documentName)
    : layout_(layout), locale_(locale), family_(pages::InstalledFamily(family)), name_(documentName),
      surface_(document_, GeometryOf(page, layout.marginInches), Font(layout.fontPoints)) {
    for (size_t i = 0; i < layout_.groups.size(); ++i) {
        pageGroups_ = layout_.groups[i].newPage ? i + 1 : pageGroups_;
    }
    PlaceColumns();
}

pages::FontSpec PagesDocument::Font(double points, bool bold, bool italic) const {
    pages::FontSpec font;
    font.family = family_;
    font.points = points;
    font.bold = bold;
    font.italic = italic;
    return font;
}

void PagesDocument::PlaceColumns() {
    double sum = 0;
    for (const LayoutColumn& column : layout_.columns) {
        sum += column.width;
    }
    const int gaps = columnGap * (static_cast<int>(layout_.columns.size()) - 1);
    const double unit = std::max(surface_.Width() - gaps, 1) / std::max(sum, 1.0);
    double x = 0;
    for (const LayoutColumn& column : layout_.columns) {
        columns_.push_back({static_cast<int>(std::lround(x)), static_cast<int>(std::lround(column.width * unit))});
        x += column.width * unit + columnGap;
    }
}

void PagesDocument::Begin(const SpecialTexts& specials) {
    specials_ = specials;
    document_.name = name_ + u": "_s + layout_.title.Fill({nullptr, specials_, locale_});
    surface_.SetFont(Font(layout_.fontPoints - 1.5));
    bottom_ = surface_.Height() - (layout_.pageFooter.IsEmpty() ? 0 : surface_.LineHeight() + 180);
}

void PagesDocument::StartPage(bool withTitle) {
    if (!numbers_.empty()) {
        if (surface_.PageCount() >= mostPages) {
            throw ProgramError(ErrorNumber::InvalidCall,
                               u"The report has more than %1 pages. Choose fewer days."_s.arg(mostPages));
        }
        surface_.StartPage();
    }
    const int section = numbers_.empty() ? 0 : numbers_.back().section + (withTitle ? 1 : 0);
    numbers_.push_back({layout_.numberPagesPerGroup ? section : 0, withTitle});
    nextPage_ = false;
    y_ = 0;
    if (withTitle) {
        DrawTitle();
    } else if (!layout_.pageHeader.IsEmpty()) {
        surface_.SetFont(Font(layout_.fontPoints - 1.5));
        y_ = surface_.LineHeight() + 200;
    }
    DrawPageHeadings();
    DrawColumnHeadings();
    DrawInnerHeadings();
    bodyTop_ = y_;
}

void PagesDocument::DrawTitle() {
    TextCell title{0, surface_.Width(), Alignment::Left, {}, 0};
    AddLines(title, surface_, layout_.title.Fill({nullptr, specials_, locale_}), Font(layout_.fontPoints * 1.9, true),
             mostHeadingLines);
    TextCell subtitle{0, surface_.Width(), Alignment::Right, {}, 0};
    AddLines(subtitle, surface_, layout_.subtitle.Fill({nullptr, specials_, locale_}), Font(layout_.fontPoints + 1),
             mostHeadingLines);
    int titleWidth = 0;
    int subtitleWidth = 0;
    for (const auto& [cell, width] : {std::pair(&title, &titleWidth), std::pair(&subtitle, &subtitleWidth)}) {
        for (const TextCell::Line& line : cell->lines) {
            surface_.SetFont(line.font);
            *width = std::max(*width, surface_.TextWidth(line.text));
        }
    }
    const int titleHeight = title.Height();
    const int subtitleHeight = subtitle.Height();
    DrawLines(title, surface_, 0, titleHeight, mostHeadingLines);
    const bool besides = titleWidth + subtitleWidth + 2 * columnGap <= surface_.Width();
    // Beside the title the last lines of both stand on one base line, as good as their sizes let them.
    const int rise = subtitle.lines.empty() ? 0 : (titleHeight - subtitleHeight) / 5;
    subtitle.alignment = besides ? Alignment::Right : Alignment::Left;
    const int top = besides ? std::max(titleHeight - subtitleHeight - rise, 0) : titleHeight + 40;
    DrawLines(subtitle, surface_, top, subtitleHeight, mostHeadingLines);
    y_ = std::max(titleHeight, top + subtitleHeight) + 60;
    DrawRule(surface_, 0, y_, surface_.Width(), titleRule);
    y_ += 160;
}

TextCell PagesDocument::MakeHeading(size_t level) {
    const OpenGroup& group = open_[level];
    TextCell cell{0, surface_.Width(), Alignment::Left, {}, 0};
    if (!group.heading.trimmed().isEmpty()) {
        const QString text = group.isShown ? group.heading + u' ' + Translate(u"(continued)"_s) : group.heading;
        const double larger = std::max(2.5 - static_cast<double>(level), 0.5);
        AddLines(cell, surface_, text, Font(layout_.fontPoints + larger, true), mostHeadingLines);
    }
    return cell;
}

void PagesDocument::DrawHeading(size_t level) {
    TextCell cell = MakeHeading(level);
    if (!cell.lines.empty()) {
        y_ += spaceAboveHeading;
        y_ += DrawLines(cell, surface_, y_, 0, mostHeadingLines) + spaceBelowHeading;
    }
    open_[level].isShown = true;
}

void PagesDocument::DrawPageHeadings() {
    for (size_t i = 0; i < std::min(pageGroups_, open_.size()); ++i) {
        DrawHeading(i);
    }
}

void PagesDocument::DrawColumnHeadings() {
    std::vector<TextCell> cells;
    for (size_t i = 0; i < layout_.columns.size(); ++i) {
        TextCell cell{columns_[i].x, columns_[i].width, layout_.columns[i].alignment, {}, 0};
        AddLines(cell, surface_, layout_.columns[i].heading, Font(layout_.fontPoints - 1, true), mostHeadingLines);
        cells.push_back(std::move(cell));
    }
    const int height = TallestCell(cells);
    if (height == 0) {
        return;
    }
    for (TextCell& cell : cells) {
        // Headings of fewer lines stand on the last one.
        DrawLines(cell, surface_, y_ + height - cell.Height(), height, mostHeadingLines);
    }
    y_ += height + 40;
    DrawRule(surface_, 0, y_, surface_.Width(), headingRule);
    y_ += 20;
}

void PagesDocument::DrawInnerHeadings() {
    for (size_t i = pageGroups_; i < open_.size(); ++i) {
        DrawHeading(i);
    }
}

int PagesDocument::InnerHeadingsHeight() {
    int height = 0;
    for (size_t i = pageGroups_; i < open_.size(); ++i) {
        const int lines = open_[i].isShown ? 0 : MakeHeading(i).Height();
        height += lines > 0 ? lines + spaceAboveHeading + spaceBelowHeading : 0;
    }
    return height;
}

void PagesDocument::BeginGroup(size_t level, const QString& heading) {
    open_.resize(level);
    open_.push_back({heading, false});
    nextPage_ = nextPage_ || layout_.groups[level].newPage;
}

void PagesDocument::StartRecord(int height) {
    if (nextPage_) {
        StartPage(true);
        return;
    }
    if (!Fits(InnerHeadingsHeight() + height) && !IsFresh()) {
        ContinuePage();
        return;
    }
    for (size_t i = pageGroups_; i < open_.size(); ++i) {
        if (!open_[i].isShown) {
            DrawHeading(i);
        }
    }
}

void PagesDocument::Flow(std::vector<TextCell>& cells) {
    for (bool onceMore = false;; onceMore = true) {
        const int room = bottom_ - y_;
        // On a page without room for a single line one is drawn all the same, so that there is an end.
        const size_t atLeast = onceMore ? 1 : 0;
        int height = 0;
        for (TextCell& cell : cells) {
            height = std::max(height, DrawLines(cell, surface_, y_, room, atLeast));
        }
        y_ += height;
        if (std::all_of(cells.begin(), cells.end(), [](const TextCell& cell) { return cell.IsDrawn(); })) {
            return;
        }
        ContinuePage();
    }
}

TextCell::Line PagesDocument::EmptyLine() {
    surface_.SetFont(Font(layout_.fontPoints));
    return {QString(), surface_.Font(), surface_.LineHeight()};
}

std::vector<TextCell> PagesDocument::MakeRow(const FilledRecord& record, bool pageStart) {
    std::vector<TextCell> cells;
    for (size_t i = 0; i < layout_.columns.size(); ++i) {
        const LayoutColumn& column = layout_.columns[i];
        TextCell cell{columns_[i].x, columns_[i].width, column.alignment, {}, 0};
        if (!record.cells[i].repeated || pageStart) {
            AddLines(cell, surface_, record.cells[i].value, Font(layout_.fontPoints, column.bold));
            if (cell.lines.empty() && !record.cells[i].below.isEmpty()) {
                cell.lines.push_back(EmptyLine());
            }
            AddLines(cell, surface_, record.cells[i].below, Font(layout_.fontPoints - 1.5));
        }
        cells.push_back(std::move(cell));
    }
    // Also a row of tick boxes alone has the height of a line.
    cells.push_back({0, 0, Alignment::Left, {EmptyLine()}, 0});
    return cells;
}

std::vector<TextCell> PagesDocument::MakeDetails(const QStringList& lines) {
    const int indent = (columns_.size() > 1 ? columns_[1].x : 0);
    TextCell bullets{indent, detailIndent, Alignment::Left, {}, 0};
    TextCell texts{indent + detailIndent, surface_.Width() - indent - detailIndent, Alignment::Left, {}, 0};
    const pages::FontSpec font = Font(layout_.fontPoints - 1, false, true);
    for (const QString& line : lines) {
        const size_t first = texts.lines.size();
        AddLines(texts, surface_, line, font);
        for (size_t i = first; i < texts.lines.size(); ++i) {
            bullets.lines.push_back({i == first ? u"\u2022"_s : QString(), font, texts.lines[i].height});
        }
    }
    std::vector<TextCell> cells;
    cells.push_back(std::move(bullets));
    cells.push_back(std::move(texts));
    return cells;
}

void PagesDocument::DrawMarks(const FilledRecord& record) {
    surface_.SetFont(Font(layout_.fontPoints));
    const int line = surface_.LineHeight();
    const int side = line * 9 / 10;
    for (size_t i = 0; i < layout_.columns.size(); ++i) {
        const LayoutColumn& column = layout_.columns[i];
        const ColumnPlace& place = columns_[i];
        if (column.kind == LayoutColumn::Kind::Tick) {
            const int free = std::max(place.width - side, 0);
            const int shift =
                column.alignment == Alignment::Left ? 0 : free / (column.alignment == Alignment::Center ? 2 : 1);
            DrawTickBox(surface_, place.x + shift, y_ + (line - side) / 2, side, record.cells[i].ticked);
        } else if (column.kind == LayoutColumn::Kind::Blank) {
            DrawRule(surface_, place.x, y_ + line, place.width, thinRule);
        }
    }
}

void PagesDocument::DrawRow(const FilledRecord& record) {
    std::vector<TextCell> details = MakeDetails(record.details);
    std::vector<TextCell> row = MakeRow(record, false);
    const int padding = layout_.rowLines ? rowPadding : paddingWithoutLines;
    StartRecord(TallestCell(row) + TallestCell(details) + 2 * padding);
    if (IsFresh()) {
        row = MakeRow(record, true);
    }
    y_ += padding;
    DrawMarks(record);
    Flow(row);
    if (!record.details.isEmpty()) {
        y_ += padding / 2;
        Flow(details);
    }
    y_ += padding;
    if (layout_.rowLines && y_ <= bottom_) {
        DrawRule(surface_, 0, y_, surface_.Width(), thinRule);
    }
}

std::vector<TextCell> PagesDocument::MakeBodyItem(const BodyItem& item, const FilledCell& filled) {
    const int width = surface_.Width();
    const pages::FontSpec font = Font(layout_.fontPoints * item.size, item.bold);
    std::vector<TextCell> cells;
    if (item.kind == BodyItem::Kind::LabelValue && !filled.value.isEmpty()) {
        const int labels = width / 4;
        TextCell label{0, labels - columnGap, Alignment::Left, {}, 0};
        AddLines(label, surface_, item.label, Font(layout_.fontPoints, true));
        TextCell value{labels, width - labels, Alignment::Left, {}, 0};
        AddLines(value, surface_, filled.value, font);
        cells.push_back(std::move(label));
        cells.push_back(std::move(value));
    } else if (item.kind == BodyItem::Kind::Text) {
        TextCell text{0, width, Alignment::Left, {}, 0};
        AddLines(text, surface_, filled.value, font);
        cells.push_back(std::move(text));
    }
    return cells;
}

void PagesDocument::DrawBody(const FilledRecord& record) {
    int height = 0;
    for (size_t i = 0; i < layout_.body.size(); ++i) {
        const BodyItem& item = layout_.body[i];
        height += item.kind == BodyItem::Kind::Space ? static_cast<int>(item.points * twipsPerPoint)
                                                     : TallestCell(MakeBodyItem(item, record.cells[i]));
    }
    std::vector<TextCell> details = MakeDetails(record.details);
    StartRecord(height + TallestCell(details));
    for (size_t i = 0; i < layout_.body.size(); ++i) {
        const BodyItem& item = layout_.body[i];
        if (item.kind == BodyItem::Kind::Space) {
            y_ += static_cast<int>(item.points * twipsPerPoint);
        } else if (item.kind == BodyItem::Kind::Rule) {
            DrawRule(surface_, 0, y_, surface_.Width(), thinRule);
        } else {
            std::vector<TextCell> cells = MakeBodyItem(item, record.cells[i]);
            Flow(cells);
            y_ += item.kind == BodyItem::Kind::LabelValue && !cells.empty() ? rowPadding : 0;
        }
    }
    Flow(details);
}

void PagesDocument::Record(const FilledRecord& record) {
    layout_.columns.empty() ? DrawBody(record) : DrawRow(record);
}

void PagesDocument::DrawLine(const QString& text, const pages::FontSpec& font, int spaceAbove) {
    TextCell cell{0, surface_.Width(), Alignment::Left, {}, 0};
    AddLines(cell, surface_, text, font);
    if (cell.lines.empty()) {
        return;
    }
    if (!Fits(spaceAbove + cell.Height()) && !IsFresh()) {
        ContinuePage();
    }
    y_ += spaceAbove;
    std::vector<TextCell> cells;
    cells.push_back(std::move(cell));
    Flow(cells);
}

void PagesDocument::EndGroup(size_t level, const QString& footer) {
    DrawLine(footer, Font(layout_.fontPoints, true), 100);
    open_.resize(level);
    y_ += layout_.body.empty() ? 60 : 0;
}

void PagesDocument::Finish(const QString& closing) {
    if (numbers_.empty()) {
        StartPage(true);
    }
    DrawLine(closing, Font(layout_.fontPoints + 0.5, true), 160);
    DrawStrips();
    for (pages::Page& page : document_.pages) {
        page.Shrink();
    }
}

void PagesDocument::DrawStrips() {
    std::vector<int> counts(numbers_.size() + 1, 0);
    for (const PageNumber& number : numbers_) {
        ++counts[static_cast<size_t>(number.section)];
    }
    int section = -1;
    int inSection = 0;
    for (size_t i = 0; i < document_.pages.size(); ++i) {
        inSection = numbers_[i].section == section ? inSection + 1 : 1;
        section = numbers_[i].section;
        specials_[static_cast<size_t>(Special::Page)] = locale_.Locale().toString(inSection);
        specials_[static_cast<size_t>(Special::Pages)] =
            locale_.Locale().toString(counts[static_cast<size_t>(section)]);
        if (!numbers_[i].hasTitle) {
            DrawStrip(document_.pages[i], layout_.pageHeader, 0);
        }
        if (!layout_.pageFooter.IsEmpty()) {
            const print::PageGeometry& geometry = surface_.Geometry();
            const int y = bottom_ + 100;
            document_.pages[i].AddLine(geometry.left, geometry.top + y, geometry.left + geometry.width,
                                       geometry.top + y, thinRule);
            DrawStrip(document_.pages[i], layout_.pageFooter, y + 60);
        }
    }
}

void PagesDocument::DrawStrip(pages::Page& page, const PageStrip& strip, int y) {
    const print::PageGeometry& geometry = surface_.Geometry();
    const pages::FontSpec font = Font(layout_.fontPoints - 1.5);
    const std::array parts = {std::pair(&strip.left, Alignment::Left), std::pair(&strip.center, Alignment::Center),
                              std::pair(&strip.right, Alignment::Right)};
    for (const auto& [text, alignment] : parts) {
        TextCell cell{0, geometry.width, alignment, {}, 0};
        AddLines(cell, surface_, text->Fill({nullptr, specials_, locale_}), font, 1);
        for (const TextCell::Line& line : cell.lines) {
            const int width = surface_.TextWidth(line.text);
            const int free = std::max(geometry.width - width, 0);
            const int shift = alignment == Alignment::Left ? 0 : free / (alignment == Alignment::Center ? 2 : 1);
            page.AddText(document_.FontIndex(font), geometry.left + shift, geometry.top + y, width, line.height,
                         line.text);
        }
    }
}

} // namespace velmora::layouts
