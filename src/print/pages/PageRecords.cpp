#include "print/pages/PageRecords.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "print/pages/TextCell.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

using namespace Qt::StringLiterals;

namespace {

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

int TallestCell(const std::vector<TextCell>& cells) {
    int height = 0;
    for (const TextCell& cell : cells) {
        height = std::max(height, cell.Height());
    }
    return height;
}

class PageRecords : public ReportWriter {
public:
    PageRecords(PageSurface& surface, pages::Document& document, const RecordForm& form)
        : surface_(surface), document_(document), form_(form), font_(surface.Font()) {
        const auto last = std::find(form_.groupsBeginPage.rbegin(), form_.groupsBeginPage.rend(), true);
        pageGroups_ = static_cast<size_t>(form_.groupsBeginPage.rend() - last);
        surface_.SetFont(Font(font_.points - 1.5));
        bottom_ = surface_.Height() - (form_.pageFooter ? surface_.LineHeight() + 180 : 0);
        PlaceColumns();
    }

    void BeginGroup(size_t level, const QString& heading) override {
        open_.resize(level);
        open_.push_back({heading, false});
        nextPage_ = nextPage_ || form_.groupsBeginPage[level];
    }

    void PrintRecord(const Record& record) override { form_.columns.empty() ? DrawItems(record) : DrawRow(record); }

    void EndGroup(size_t level, const QString& footer) override {
        DrawLine(footer, Font(font_.points, true), 100);
        open_.resize(level);
        y_ += form_.items.empty() ? 60 : 0;
    }

    void EndRecords(const QString& closing) override {
        if (numbers_.empty()) {
            StartPage(true);
        }
        DrawLine(closing, Font(font_.points + 0.5, true), 160);
        DrawStrips();
        for (pages::Page& page : document_.pages) {
            page.Shrink();
        }
    }

private:
    struct OpenGroup {
        QString heading;
        // Its heading is on a page already.
        bool isShown = false;
    };
    struct ColumnPlace {
        int x = 0;
        int width = 0;
    };
    // How the page strips count the page.
    struct PageNumber {
        int section = 0;
        bool hasTitle = false;
    };

    pages::FontSpec Font(double points, bool bold = false, bool italic = false) const {
        pages::FontSpec font = font_;
        font.points = points;
        font.bold = bold;
        font.italic = italic;
        return font;
    }

    void PlaceColumns() {
        double sum = 0;
        for (const RecordColumn& column : form_.columns) {
            sum += column.width;
        }
        const int gaps = columnGap * (static_cast<int>(form_.columns.size()) - 1);
        const double unit = std::max(surface_.Width() - gaps, 1) / std::max(sum, 1.0);
        double x = 0;
        for (const RecordColumn& column : form_.columns) {
            columns_.push_back({static_cast<int>(std::lround(x)), static_cast<int>(std::lround(column.width * unit))});
            x += column.width * unit + columnGap;
        }
    }

    void StartPage(bool withTitle) {
        if (!numbers_.empty()) {
            if (surface_.PageCount() >= mostPages) {
                throw ProgramError(ErrorNumber::InvalidCall,
                                   u"The report has more than %1 pages. Choose fewer days."_s.arg(mostPages));
            }
            surface_.StartPage();
        }
        const int section = numbers_.empty() ? 0 : numbers_.back().section + (withTitle ? 1 : 0);
        numbers_.push_back({form_.numberPagesPerGroup ? section : 0, withTitle});
        nextPage_ = false;
        y_ = 0;
        if (withTitle) {
            DrawTitle();
        } else if (form_.pageHeader) {
            surface_.SetFont(Font(font_.points - 1.5));
            y_ = surface_.LineHeight() + 200;
        }
        DrawHeadings(0, pageGroups_);
        DrawColumnHeadings();
        DrawHeadings(pageGroups_, open_.size());
        bodyTop_ = y_;
    }

    void DrawTitle() {
        TextCell title{0, surface_.Width()};
        AddLines(title, surface_, form_.title, Font(font_.points * 1.9, true), mostHeadingLines);
        TextCell subtitle{0, surface_.Width(), Alignment::Right};
        AddLines(subtitle, surface_, form_.subtitle, Font(font_.points + 1), mostHeadingLines);
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
        surface_.DrawRule(0, y_, surface_.Width(), titleRule);
        y_ += 160;
    }

    TextCell MakeHeading(size_t level) {
        const OpenGroup& group = open_[level];
        TextCell cell{0, surface_.Width()};
        if (!group.heading.trimmed().isEmpty()) {
            const QString text = group.isShown ? group.heading + u' ' + Translate(u"(continued)"_s) : group.heading;
            const double larger = std::max(2.5 - static_cast<double>(level), 0.5);
            AddLines(cell, surface_, text, Font(font_.points + larger, true), mostHeadingLines);
        }
        return cell;
    }

    void DrawHeading(size_t level) {
        TextCell cell = MakeHeading(level);
        if (!cell.lines.empty()) {
            y_ += spaceAboveHeading;
            y_ += DrawLines(cell, surface_, y_, 0, mostHeadingLines) + spaceBelowHeading;
        }
        open_[level].isShown = true;
    }

    void DrawHeadings(size_t first, size_t end) {
        for (size_t i = first; i < std::min(end, open_.size()); ++i) {
            DrawHeading(i);
        }
    }

    void DrawColumnHeadings() {
        std::vector<TextCell> cells;
        for (size_t i = 0; i < form_.columns.size(); ++i) {
            TextCell cell{columns_[i].x, columns_[i].width, form_.columns[i].alignment};
            AddLines(cell, surface_, form_.columns[i].heading, Font(font_.points - 1, true), mostHeadingLines);
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
        surface_.DrawRule(0, y_, surface_.Width(), headingRule);
        y_ += 20;
    }

    // Of the headings that are on no page yet.
    int InnerHeadingsHeight() {
        int height = 0;
        for (size_t i = pageGroups_; i < open_.size(); ++i) {
            const int lines = open_[i].isShown ? 0 : MakeHeading(i).Height();
            height += lines > 0 ? lines + spaceAboveHeading + spaceBelowHeading : 0;
        }
        return height;
    }

    void ContinuePage() { StartPage(false); }
    bool Fits(int height) const { return y_ + height <= bottom_; }
    bool IsFresh() const { return y_ == bodyTop_; }

    void StartRecord(int height) {
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

    // Draws the cells side by side from the print position on, over as many pages as they need.
    void Flow(std::vector<TextCell>& cells) {
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

    TextCell::Line EmptyLine() {
        surface_.SetFont(Font(font_.points));
        return {QString(), surface_.Font(), surface_.LineHeight()};
    }

    std::vector<TextCell> MakeRow(const Record& record, bool pageStart) {
        std::vector<TextCell> cells;
        for (size_t i = 0; i < form_.columns.size(); ++i) {
            const RecordColumn& column = form_.columns[i];
            TextCell cell{columns_[i].x, columns_[i].width, column.alignment};
            if (!record.cells[i].repeated || pageStart) {
                AddLines(cell, surface_, record.cells[i].value, Font(font_.points, column.bold));
                if (cell.lines.empty() && !record.cells[i].below.isEmpty()) {
                    cell.lines.push_back(EmptyLine());
                }
                AddLines(cell, surface_, record.cells[i].below, Font(font_.points - 1.5));
            }
            cells.push_back(std::move(cell));
        }
        // Also a row of tick boxes alone has the height of a line.
        cells.push_back({0, 0, Alignment::Left, {EmptyLine()}, 0});
        return cells;
    }

    std::vector<TextCell> MakeDetails(const QStringList& lines) {
        const int indent = (columns_.size() > 1 ? columns_[1].x : 0);
        TextCell bullets{indent, detailIndent};
        TextCell texts{indent + detailIndent, surface_.Width() - indent - detailIndent};
        const pages::FontSpec font = Font(font_.points - 1, false, true);
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

    void DrawMarks(const Record& record) {
        surface_.SetFont(Font(font_.points));
        const int line = surface_.LineHeight();
        const int side = line * 9 / 10;
        for (size_t i = 0; i < form_.columns.size(); ++i) {
            const RecordColumn& column = form_.columns[i];
            const ColumnPlace& place = columns_[i];
            if (column.kind == RecordColumn::Kind::Tick) {
                const int x = AlignedX({place.x, place.width, column.alignment}, side);
                DrawTickBox(surface_, x, y_ + (line - side) / 2, side, record.cells[i].ticked);
            } else if (column.kind == RecordColumn::Kind::Blank) {
                surface_.DrawRule(place.x, y_ + line, place.width, thinRule);
            }
        }
    }

    void DrawRow(const Record& record) {
        std::vector<TextCell> details = MakeDetails(record.details);
        std::vector<TextCell> row = MakeRow(record, false);
        const int padding = form_.rowLines ? rowPadding : paddingWithoutLines;
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
        if (form_.rowLines && y_ <= bottom_) {
            surface_.DrawRule(0, y_, surface_.Width(), thinRule);
        }
    }

    std::vector<TextCell> MakeItem(const RecordItem& item, const RecordCell& filled) {
        const int width = surface_.Width();
        const pages::FontSpec font = Font(font_.points * item.size, item.bold);
        std::vector<TextCell> cells;
        if (item.kind == RecordItem::Kind::LabelValue && !filled.value.isEmpty()) {
            const int labels = width / 4;
            TextCell label{0, labels - columnGap};
            AddLines(label, surface_, item.label, Font(font_.points, true));
            TextCell value{labels, width - labels};
            AddLines(value, surface_, filled.value, font);
            cells.push_back(std::move(label));
            cells.push_back(std::move(value));
        } else if (item.kind == RecordItem::Kind::Paragraph) {
            TextCell text{0, width};
            AddLines(text, surface_, filled.value, font);
            cells.push_back(std::move(text));
        }
        return cells;
    }

    void DrawItems(const Record& record) {
        int height = 0;
        for (size_t i = 0; i < form_.items.size(); ++i) {
            const RecordItem& item = form_.items[i];
            height += item.kind == RecordItem::Kind::Space ? static_cast<int>(item.points * twipsPerPoint)
                                                           : TallestCell(MakeItem(item, record.cells[i]));
        }
        std::vector<TextCell> details = MakeDetails(record.details);
        StartRecord(height + TallestCell(details));
        for (size_t i = 0; i < form_.items.size(); ++i) {
            const RecordItem& item = form_.items[i];
            if (item.kind == RecordItem::Kind::Space) {
                y_ += static_cast<int>(item.points * twipsPerPoint);
            } else if (item.kind == RecordItem::Kind::Rule) {
                surface_.DrawRule(0, y_, surface_.Width(), thinRule);
            } else {
                std::vector<TextCell> cells = MakeItem(item, record.cells[i]);
                Flow(cells);
                y_ += item.kind == RecordItem::Kind::LabelValue && !cells.empty() ? rowPadding : 0;
            }
        }
        Flow(details);
    }

    void DrawLine(const QString& text, const pages::FontSpec& font, int spaceAbove) {
        TextCell cell{0, surface_.Width()};
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

    void DrawStrips() {
        std::vector<int> counts(numbers_.size() + 1, 0);
        for (const PageNumber& number : numbers_) {
            ++counts[static_cast<size_t>(number.section)];
        }
        int section = -1;
        int inSection = 0;
        for (size_t i = 0; i < document_.pages.size(); ++i) {
            inSection = numbers_[i].section == section ? inSection + 1 : 1;
            section = numbers_[i].section;
            const int count = counts[static_cast<size_t>(section)];
            if (!numbers_[i].hasTitle && form_.pageHeader) {
                DrawStrip(document_.pages[i], form_.pageHeader(inSection, count), 0);
            }
            if (form_.pageFooter) {
                const PageGeometry& geometry = surface_.Geometry();
                const int y = bottom_ + 100;
                document_.pages[i].AddLine(geometry.left, geometry.top + y, geometry.left + geometry.width,
                                           geometry.top + y, thinRule);
                DrawStrip(document_.pages[i], form_.pageFooter(inSection, count), y + 60);
            }
        }
    }

    void DrawStrip(pages::Page& page, const std::array<QString, 3>& texts, int y) {
        const PageGeometry& geometry = surface_.Geometry();
        const pages::FontSpec font = Font(font_.points - 1.5);
        constexpr std::array alignments = {Alignment::Left, Alignment::Center, Alignment::Right};
        for (size_t i = 0; i < texts.size(); ++i) {
            TextCell cell{0, geometry.width, alignments[i]};
            AddLines(cell, surface_, texts[i], font, 1);
            for (const TextCell::Line& line : cell.lines) {
                const int width = surface_.TextWidth(line.text);
                const int x = geometry.left + AlignedX(cell, width);
                page.AddText(document_.FontIndex(font), x, geometry.top + y, width, line.height, line.text);
            }
        }
    }

    PageSurface& surface_;
    pages::Document& document_;
    RecordForm form_;
    pages::FontSpec font_;
    std::vector<ColumnPlace> columns_;
    std::vector<PageNumber> numbers_;
    std::vector<OpenGroup> open_;
    // Groups up to this one stand above the column headings.
    size_t pageGroups_ = 0;
    bool nextPage_ = true;
    int y_ = 0;
    int bodyTop_ = 0;
    int bottom_ = 0;
};

} // namespace

std::unique_ptr<ReportWriter> MakePageRecords(PageSurface& surface, pages::Document& document, const RecordForm& form) {
    return std::make_unique<PageRecords>(surface, document, form);
}

} // namespace velmora::print
