#include "print/pages/PageWriter.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

namespace {

// Free space kept between a column's text and the next column.
constexpr int columnGap = 80;
// How far boxes reach around their text.
constexpr int boxMargin = 20;

// Leader styles.
constexpr qint16 boxes = 1;
constexpr qint16 leaderLines = 2;

// The room that an element asks for when its text takes `lines` lines, where `least` is what it asks for with one.
qint16 RoomFor(size_t lines, qint16 least) {
    return static_cast<qint16>(std::min<size_t>(lines - 1 + static_cast<size_t>(least), 1000));
}

// A text as pages show it: what would move the print position or draw an empty frame is a blank. Line ends stay.
QString OnPage(Text text) {
    QString shown = text.toString();
    const auto isControl = [](QChar c) { return c < u' ' && c != u'\n' && c != u'\r'; };
    if (std::any_of(shown.cbegin(), shown.cend(), isControl)) {
        std::replace_if(shown.begin(), shown.end(), isControl, QChar(u' '));
    }
    return shown;
}

// The index of the first line that no broken line follows or is. The lines are views into `text`.
size_t BehindLastBroken(const std::vector<QStringView>& lines, QStringView text) {
    size_t index = lines.size() - 1;
    const auto isBroken = [text](QStringView line) {
        return line.end() != text.end() && *line.end() != u'\n' && *line.end() != u'\r';
    };
    while (index > 0 && !isBroken(lines[index - 1])) {
        --index;
    }
    return index;
}

} // namespace

PageWriter::PageWriter(JobState& state, PageTarget target, const QString& documentName)
    : state_(state), target_(std::move(target)), document_{documentName, {}, {}},
      surface_(document_, target_.geometry, target_.font) {}

int PageWriter::TextWidth(Text text) const {
    const QString shown = OnPage(text);
    int widest = 0;
    for (QStringView line : QStringView(shown).tokenize(u'\n')) {
        line.chop(line.endsWith(u'\r') ? 1 : 0);
        widest = std::max(widest, surface_.TextWidth(line));
    }
    return widest;
}

void PageWriter::NewPage() {
    const int closing = surface_.PageCount();
    if (target_.pageLimit > 0 && closing >= target_.pageLimit) {
        target_.refusePage();
        return;
    }
    // Where breaks are suppressed a page may be full to its foot and beyond; its number then stands below all of it.
    surface_.CurrentY = std::max(surface_.Height() - (surface_.LineHeight() + 20), surface_.Lowest());
    surface_.CurrentX = surface_.Width() / 2;
    surface_.Print(QString::number(closing));
    surface_.StartPage();
}

void PageWriter::EnsureRoom(qint16 lines) {
    constexpr int topOfPage = 100;
    const int needed = (surface_.LineHeight() + 20) * lines;
    if (!state_.SuppressPageBreaks && needed > surface_.Height() - surface_.CurrentY && surface_.CurrentY > topOfPage) {
        NewPage();
    }
}

void PageWriter::PrintRule(qint16 width, qint16 spaceAbove, qint16 spaceBelow) {
    const int drawn = static_cast<int>(std::lrint(static_cast<double>(width) / target_.ruleDivisor));
    // Dots are compared with twips as they stand: the room asked for is a little less than the rule takes.
    if (drawn + spaceAbove + spaceBelow > surface_.Height() - surface_.CurrentY && surface_.CurrentY > 10) {
        NewPage();
    }
    surface_.AddDots(spaceAbove);
    if (drawn != 0) {
        surface_.DrawWidth = drawn;
        surface_.DrawLineTo(surface_.Width(), surface_.CurrentY);
    }
    surface_.CurrentX = 0;
    surface_.AddDots(spaceBelow);
}

void PageWriter::Restyle(bool bold, bool italic, bool underline) {
    pages::FontSpec font = surface_.Font();
    font.bold = bold;
    font.italic = italic;
    font.underline = underline;
    surface_.SetFont(font);
}

void PageWriter::PrintReportTitle(Text title, Text subtitle, Text secondLine) {
    const QString first = OnPage(title);
    const QString second = OnPage(subtitle);
    if (!titled_) {
        titled_ = true;
        document_.name += QStringLiteral(": ") + first;
    }
    const pages::FontSpec before = surface_.Font();
    pages::FontSpec large = before;
    large.points = std::round(before.points) * 1.5;
    large.bold = true;
    large.italic = true;
    surface_.SetFont(large);
    const size_t lines = surface_.Wrap(first, surface_.Width()).size() + surface_.Wrap(second, surface_.Width()).size();
    surface_.SetFont(before);
    const QString third = OnPage(secondLine);
    if (surface_.CurrentY > surface_.Height() / 2) {
        NewPage();
    } else if (lines > 2) {
        // What takes more lines than a title does must not run off the page.
        EnsureRoom(RoomFor(lines * 3 / 2 + surface_.Wrap(third, surface_.Width()).size(), 5));
    }
    PrintRule(5, 20, 20);
    PrintRule(5, 20, 20);
    AddVerticalSpace(50);

    surface_.SetFont(large);
    PrintWrapped(first, 0);
    // The subtitle begins at the next print zone of 14 columns, on the title's line where it fits.
    const int zone = std::max(14 * surface_.TextWidth(u"0"), 1);
    surface_.CurrentX = (surface_.CurrentX / zone + 1) * zone;
    large.italic = before.italic;
    surface_.SetFont(large);
    if (!second.isEmpty() && surface_.CurrentX + surface_.TextWidth(second) > surface_.Width()) {
        surface_.EndLine();
    }
    PrintWrapped(second, surface_.CurrentX);
    surface_.EndLine();

    AddVerticalSpace(20);
    pages::FontSpec after = before;
    after.points = std::round(before.points);
    surface_.SetFont(after);
    PrintWrapped(third, 0);
    surface_.EndLine();
    PrintRule(5, 20, 20);
    PrintRule(5, 20, 20);
    AddVerticalSpace(20);
}

void PageWriter::PrintLines(const Lines& lines, int x) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            surface_.EndLine();
        }
        surface_.CurrentX = x;
        surface_.Print(lines[i]);
    }
}

void PageWriter::PrintWrapped(QStringView text, int x) {
    PrintLines(surface_.Wrap(text, surface_.Width() - x), x);
}

void PageWriter::PrintSectionHeading(Text text, int x) {
    const QString heading = OnPage(text);
    const pages::FontSpec before = surface_.Font();
    pages::FontSpec strong = before;
    strong.bold = true;
    strong.italic = true;
    surface_.SetFont(strong);
    const Lines lines = surface_.Wrap(heading, surface_.Width() - x);
    surface_.SetFont(before);
    EnsureRoom(RoomFor(lines.size(), 4));
    surface_.CurrentX = x;
    PrintRule(5, 60, 15);
    surface_.SetFont(strong);
    PrintLines(lines, x);
    surface_.EndLine();
    AddVerticalSpace(40);
    surface_.SetFont(before);
}

void PageWriter::PrintParagraph(Text text) {
    if (text.isEmpty()) {
        return;
    }
    const QString whole = OnPage(text);
    const Lines lines = surface_.Wrap(whole, surface_.Width() - state_.TabStop1());
    // The lines behind the last one that was too long stay together, as far as a page holds them.
    const size_t rest = BehindLastBroken(lines, whole);
    for (size_t i = 0; i < lines.size(); ++i) {
        EnsureRoom(i == rest ? RoomFor(lines.size() - rest, 2) : qint16{2});
        surface_.CurrentX = state_.TabStop1();
        surface_.Print(lines[i]);
        surface_.EndLine();
    }
}

PageWriter::Pair PageWriter::MakePair(Text label, Text value, std::optional<qint16> style) const {
    Pair pair;
    pair.labelText = OnPage(label);
    pair.valueText = OnPage(value);
    pair.style = style ? *style : state_.attributes.Lookup(label.toString());
    pair.right = surface_.Width();
    pair.labelBox = static_cast<int>(surface_.Width() * 0.2) - boxMargin;
    pair.spaceBelow = 15;
    return pair;
}

PageWriter::Pair PageWriter::LeftPair(Text label, Text value, std::optional<qint16> style) const {
    Pair pair = MakePair(label, value, style);
    pair.label = state_.TabStop1();
    pair.value = state_.TabStop2();
    return pair;
}

PageWriter::Pair PageWriter::RightPair(Text label, Text value, std::optional<qint16> style) const {
    Pair pair = MakePair(label, value, style);
    pair.label = state_.TabStop3();
    pair.value = state_.TabStop4();
    return pair;
}

void PageWriter::WrapPair(Pair& pair) {
    const pages::FontSpec before = surface_.Font();
    Restyle(true, before.italic, before.underline);
    // Tab stops may stand in any order; a label without room before its value is left as it is.
    const int room = pair.value - pair.label - columnGap;
    pair.labelLines = surface_.Wrap(pair.labelText, room > 0 ? room : surface_.Width());
    Restyle(before.bold || (pair.style & Bold) != 0, before.italic || (pair.style & Italic) != 0,
            before.underline || (pair.style & Underlined) != 0);
    pair.valueFont = surface_.Font();
    pair.valueLines = surface_.Wrap(pair.valueText, pair.right - pair.value - boxMargin);
    surface_.SetFont(before);
}

void PageWriter::PrintLabelCell(const Pair& pair) {
    surface_.CurrentX = pair.label;
    const int lines = static_cast<int>(pair.labelLines.size());
    if (state_.LeaderStyle == boxes) {
        surface_.DrawBox(-boxMargin, -boxMargin, pair.labelBox, surface_.LineHeight() * lines + 25);
    }
    pages::FontSpec font = surface_.Font();
    font.bold = true;
    surface_.SetFont(font);
    PrintLines(pair.labelLines, pair.label);
    if (state_.LeaderStyle == leaderLines) {
        const int top = surface_.CurrentY;
        surface_.CurrentY += surface_.LineHeight();
        surface_.DrawLineTo(pair.value, surface_.CurrentY);
        surface_.CurrentY = top;
    }
}

void PageWriter::PrintValueCell(const Pair& pair) {
    surface_.CurrentX = pair.value;
    const bool grey = (pair.style & GreyBox) != 0;
    // The label's box of the next pair is filled alike.
    surface_.FillStyle = grey ? pages::Fill::Grey : pages::Fill::None;
    surface_.SetFont(pair.valueFont);
    if (grey || state_.LeaderStyle == boxes) {
        int widest = 0;
        for (const QStringView line : pair.valueLines) {
            widest = std::max(widest, surface_.TextWidth(line));
        }
        surface_.DrawBox(-boxMargin, -boxMargin, widest + 2 * boxMargin,
                         surface_.LineHeight() * static_cast<int>(pair.valueLines.size()) + 25);
    }
    PrintLines(pair.valueLines, pair.value);
}

void PageWriter::PrintPair(const Pair& pair) {
    const pages::FontSpec before = surface_.Font();
    const int top = surface_.CurrentY;
    PrintLabelCell(pair);
    const int labelBottom = surface_.CurrentY;
    surface_.CurrentY = top;
    PrintValueCell(pair);
    surface_.CurrentY = std::max(surface_.CurrentY, labelBottom);
    surface_.SetFont(before);
    surface_.EndLine();
    AddVerticalSpace(pair.spaceBelow);
}

void PageWriter::EnsureRoomFor(std::initializer_list<const Pair*> pairs) {
    size_t lines = 1;
    for (const Pair* pair : pairs) {
        lines = std::max({lines, pair->labelLines.size(), pair->valueLines.size()});
    }
    EnsureRoom(RoomFor(lines, 5));
}

void PageWriter::PrintLabelValue(Text label, Text value, std::optional<qint16> style) {
    Pair pair = state_.RightPair ? RightPair(label, value, style) : LeftPair(label, value, style);
    WrapPair(pair);
    EnsureRoomFor({&pair});
    PrintPair(pair);
}

void PageWriter::PrintWideLabelValue(Text label, Text value, std::optional<qint16> style) {
    Pair pair = LeftPair(label, value, style);
    pair.value = state_.TabStop3();
    pair.labelBox = static_cast<int>(surface_.Width() * 0.4) - boxMargin;
    pair.spaceBelow = 20;
    WrapPair(pair);
    EnsureRoomFor({&pair});
    PrintPair(pair);
}

void PageWriter::PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16> style) {
    Pair left = LeftPair(label1, value1, {});
    left.right = state_.TabStop3() - columnGap;
    Pair right = RightPair(label2, value2, style);
    WrapPair(left);
    WrapPair(right);
    // Breaks before the first pair or not at all, so that both stand on one line.
    EnsureRoomFor({&left, &right});
    const int top = surface_.CurrentY;
    PrintPair(left);
    const int bottom = surface_.CurrentY;
    surface_.CurrentY = top;
    PrintPair(right);
    surface_.CurrentY = std::max(surface_.CurrentY, bottom);
    state_.RightPair = false;
}

void PageWriter::PlaceCells(std::vector<Cell>& cells) const {
    std::erase_if(cells, [](const Cell& cell) { return cell.text.isEmpty(); });
    int previousEnd = 0;
    for (Cell& cell : cells) {
        const int width = surface_.TextWidth(cell.text);
        cell.left = cell.x;
        if (cell.endsAtRight) {
            // A text that would run into the one before it shares the rest of the line with it.
            const int half = (cell.x + surface_.Width()) / 2;
            const int free = previousEnd > cell.x - columnGap ? std::min(previousEnd + columnGap, half) : cell.x;
            cell.left = std::max(free, surface_.Width() - width);
        }
        previousEnd = cell.left + width;
    }
    for (size_t i = 0; i < cells.size(); ++i) {
        const int right = i + 1 < cells.size() ? cells[i + 1].left - columnGap : surface_.Width();
        // Tab stops may stand in any order; a cell without room before the next one is left as it is.
        cells[i].lines = surface_.Wrap(cells[i].text, right > cells[i].left ? right - cells[i].left : surface_.Width());
    }
}

void PageWriter::PrintCells(std::vector<Cell> cells, qint16 least) {
    PlaceCells(cells);
    size_t lines = 1;
    for (const Cell& cell : cells) {
        lines = std::max(lines, cell.lines.size());
    }
    EnsureRoom(RoomFor(lines, least));
    const int top = surface_.CurrentY;
    for (const Cell& cell : cells) {
        surface_.CurrentY = top;
        PrintLines(cell.lines, cell.left);
    }
    surface_.CurrentX = 0;
    surface_.CurrentY = top + surface_.LineHeight() * static_cast<int>(lines);
}

void PageWriter::PrintTableRow(std::span<const Text> cells, RowStyle style) {
    const pages::FontSpec before = surface_.Font();
    switch (style) {
    case RowStyle::Wrapped:
        Restyle(false, before.italic, before.underline);
        PrintWrappedRow(cells);
        return;
    case RowStyle::Indented:
        PrintIndentedRow(cells);
        return;
    case RowStyle::Cut:
    case RowStyle::CutHeading:
        Restyle(before.bold || style == RowStyle::CutHeading, before.italic, before.underline);
        PrintCutRow(cells);
        surface_.SetFont(before);
    }
}

int PageWriter::TabStop(size_t index) const {
    return index < state_.TabStops.size() ? state_.TabStops[index] : surface_.Width();
}

void PageWriter::PrintWrappedRow(std::span<const Text> texts) {
    std::vector<Cell> cells;
    for (size_t i = 0; i < texts.size(); ++i) {
        cells.push_back({i == 0 ? 0 : TabStop(i - 1), OnPage(texts[i])});
    }
    if (cells.size() > 1 && surface_.TextWidth(cells.back().text) > surface_.Width() - cells.back().x) {
        cells.back().x = cells[cells.size() - 2].x;
        cells.back().endsAtRight = true;
    }
    PrintCells(std::move(cells), 4);
}

void PageWriter::PrintIndentedRow(std::span<const Text> texts) {
    std::vector<Cell> cells;
    for (size_t i = 0; i < texts.size(); ++i) {
        const bool isLast = i > 0 && i + 1 == texts.size();
        cells.push_back({TabStop(isLast ? i - 1 : i), OnPage(texts[i]), isLast});
    }
    PrintCells(std::move(cells), 3);
}

void PageWriter::PrintCutRow(std::span<const Text> texts) {
    int left = 0;
    for (size_t i = 0; i < texts.size(); ++i) {
        const QString shown = OnPage(texts[i]);
        const auto end = std::find_if(shown.begin(), shown.end(), [](QChar c) { return c == u'\n' || c == u'\r'; });
        surface_.CurrentX = left;
        surface_.Print(surface_.Fitting(QStringView(shown.begin(), end), TabStop(i) - left));
        left = TabStop(i);
    }
    surface_.EndLine();
}

} // namespace velmora::print
