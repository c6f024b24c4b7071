#include "print/pages/PageWriter.h"

#include "print/pages/PageRecords.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

// The index of the first line that no broken line follows or is.
size_t BehindLastBroken(const std::vector<TextCell::Line>& lines) {
    size_t index = lines.size() - 1;
    while (index > 0 && !lines[index - 1].isBroken) {
        --index;
    }
    return index;
}

} // namespace

PageWriter::PageWriter(JobState& state, const PageTarget& target, const QString& documentName)
    : state_(state), target_(target), document_{documentName, {}, {}},
      surface_(document_, target_.geometry, target_.font) {}

void PageWriter::Name(const QString& title) {
    if (!std::exchange(titled_, true)) {
        document_.name += QStringLiteral(": ") + title;
    }
}

void PageWriter::BeginRecords(const RecordForm& form) {
    Name(form.title);
    records_ = MakePageRecords(surface_, document_, form);
}

void PageWriter::BeginGroup(size_t level, const QString& heading) {
    records_->BeginGroup(level, heading);
}

void PageWriter::PrintRecord(const Record& record) {
    records_->PrintRecord(record);
}

void PageWriter::EndGroup(size_t level, const QString& footer) {
    records_->EndGroup(level, footer);
}

void PageWriter::EndRecords(const QString& closing) {
    records_->EndRecords(closing);
}

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
        RefusePage();
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
        surface_.DrawRule(surface_.CurrentX, surface_.CurrentY, surface_.Width() - surface_.CurrentX, drawn);
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
    Name(first);
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

TextCell PageWriter::Wrapped(const QString& text, int x) {
    TextCell cell{x, surface_.Width() - x};
    AddWrapped(cell, surface_, text, surface_.Font());
    return cell;
}

void PageWriter::PrintCell(TextCell& cell) {
    DrawLines(cell, surface_, surface_.CurrentY, std::numeric_limits<int>::max(), 0);
}

void PageWriter::PrintWrapped(const QString& text, int x) {
    TextCell cell = Wrapped(text, x);
    PrintCell(cell);
}

void PageWriter::PrintSectionHeading(Text text, int x) {
    const pages::FontSpec before = surface_.Font();
    Restyle(true, true, before.underline);
    TextCell heading = Wrapped(OnPage(text), x);
    surface_.SetFont(before);
    EnsureRoom(RoomFor(heading.lines.size(), 4));
    surface_.CurrentX = x;
    PrintRule(5, 60, 15);
    PrintCell(heading);
    surface_.EndLine();
    AddVerticalSpace(40);
    surface_.SetFont(before);
}

void PageWriter::PrintParagraph(Text text) {
    if (text.isEmpty()) {
        return;
    }
    TextCell cell = Wrapped(OnPage(text), state_.TabStop1());
    // The lines behind the last one that was too long stay together, as far as a page holds them.
    const size_t rest = BehindLastBroken(cell.lines);
    while (!cell.IsDrawn()) {
        EnsureRoom(cell.drawn == rest ? RoomFor(cell.lines.size() - rest, 2) : qint16{2});
        DrawLines(cell, surface_, surface_.CurrentY, 0, 1);
        surface_.EndLine();
    }
}

PageWriter::Pair PageWriter::MakePair(const LabelValue& texts, int labelX, int valueX, int right) {
    Pair pair;
    pair.style = texts.style ? *texts.style : state_.attributes.Lookup(texts.label.toString());
    const pages::FontSpec before = surface_.Font();
    pages::FontSpec font = before;
    font.bold = true;
    // Tab stops may stand in any order; a label without room before its value is left as it is.
    const int room = valueX - labelX - columnGap;
    pair.label = {labelX, room > 0 ? room : surface_.Width()};
    AddWrapped(pair.label, surface_, OnPage(texts.label), font);
    font.bold = before.bold || (pair.style & Bold) != 0;
    font.italic = before.italic || (pair.style & Italic) != 0;
    font.underline = before.underline || (pair.style & Underlined) != 0;
    pair.value = {valueX, right - valueX - boxMargin};
    AddWrapped(pair.value, surface_, OnPage(texts.value), font);
    surface_.SetFont(before);
    return pair;
}

void PageWriter::PrintLabelCell(Pair& pair, int boxWidth) {
    surface_.CurrentX = pair.label.x;
    if (state_.LeaderStyle == boxes) {
        const int lines = static_cast<int>(pair.label.lines.size());
        surface_.DrawBox(-boxMargin, -boxMargin, boxWidth, surface_.LineHeight() * lines + 25);
    }
    PrintCell(pair.label);
    if (state_.LeaderStyle == leaderLines) {
        const int top = surface_.CurrentY;
        surface_.CurrentY += surface_.LineHeight();
        surface_.DrawLineTo(pair.value.x, surface_.CurrentY);
        surface_.CurrentY = top;
    }
}

void PageWriter::PrintValueCell(Pair& pair) {
    surface_.CurrentX = pair.value.x;
    const bool grey = (pair.style & GreyBox) != 0;
    // The label's box of the next pair is filled alike.
    surface_.FillStyle = grey ? pages::Fill::Grey : pages::Fill::None;
    if (grey || state_.LeaderStyle == boxes) {
        surface_.SetFont(pair.value.lines.front().font);
        int widest = 0;
        for (const TextCell::Line& line : pair.value.lines) {
            widest = std::max(widest, surface_.TextWidth(line.text));
        }
        surface_.DrawBox(-boxMargin, -boxMargin, widest + 2 * boxMargin, pair.value.Height() + 25);
    }
    PrintCell(pair.value);
}

void PageWriter::PrintPair(Pair& pair, int labelBox, qint16 spaceBelow) {
    const pages::FontSpec before = surface_.Font();
    const int top = surface_.CurrentY;
    PrintLabelCell(pair, labelBox);
    const int labelBottom = surface_.CurrentY;
    surface_.CurrentY = top;
    PrintValueCell(pair);
    surface_.CurrentY = std::max(surface_.CurrentY, labelBottom);
    surface_.SetFont(before);
    surface_.EndLine();
    AddVerticalSpace(spaceBelow);
}

std::vector<PageWriter::Pair> PageWriter::PlacePairs(std::span<const LabelValue> texts, PairWidth width) {
    std::vector<Pair> pairs;
    for (const LabelValue& each : texts) {
        const bool right = !pairs.empty() || (texts.size() == 1 && state_.RightPair);
        if (width == PairWidth::Wide) {
            pairs.push_back(MakePair(each, state_.TabStop1(), state_.TabStop3(), surface_.Width()));
        } else if (right) {
            pairs.push_back(MakePair(each, state_.TabStop3(), state_.TabStop4(), surface_.Width()));
        } else {
            const int end = texts.size() > 1 ? state_.TabStop3() - columnGap : surface_.Width();
            pairs.push_back(MakePair(each, state_.TabStop1(), state_.TabStop2(), end));
        }
    }
    return pairs;
}

void PageWriter::PrintPairs(std::span<const LabelValue> texts, PairWidth width) {
    std::vector<Pair> pairs = PlacePairs(texts, width);
    size_t lines = 1;
    for (const Pair& pair : pairs) {
        lines = std::max({lines, pair.label.lines.size(), pair.value.lines.size()});
    }
    // Breaks before the first pair or not at all, so that all stand on one line.
    EnsureRoom(RoomFor(lines, 5));
    const bool wide = width == PairWidth::Wide;
    const int labelBox = static_cast<int>(surface_.Width() * (wide ? 0.4 : 0.2)) - boxMargin;
    const int top = surface_.CurrentY;
    int bottom = top;
    for (Pair& pair : pairs) {
        surface_.CurrentY = top;
        PrintPair(pair, labelBox, wide ? 20 : 15);
        bottom = std::max(bottom, surface_.CurrentY);
    }
    surface_.CurrentY = bottom;
    state_.RightPair = state_.RightPair && pairs.size() == 1;
}

void PageWriter::PlaceCells(std::vector<Cell>& cells) {
    std::erase_if(cells, [](const Cell& cell) { return cell.text.isEmpty(); });
    int previousEnd = 0;
    for (Cell& cell : cells) {
        const int width = surface_.TextWidth(cell.text);
        cell.wrapped.x = cell.x;
        if (cell.endsAtRight) {
            // A text that would run into the one before it shares the rest of the line with it.
            const int half = (cell.x + surface_.Width()) / 2;
            const int free = previousEnd > cell.x - columnGap ? std::min(previousEnd + columnGap, half) : cell.x;
            cell.wrapped.x = std::max(free, surface_.Width() - width);
        }
        previousEnd = cell.wrapped.x + width;
    }
    for (size_t i = 0; i < cells.size(); ++i) {
        Cell& cell = cells[i];
        const int right = i + 1 < cells.size() ? cells[i + 1].wrapped.x - columnGap : surface_.Width();
        // Tab stops may stand in any order; a cell without room before the next one is left as it is.
        cell.wrapped.width = right > cell.wrapped.x ? right - cell.wrapped.x : surface_.Width();
        AddWrapped(cell.wrapped, surface_, cell.text, surface_.Font());
    }
}

void PageWriter::PrintCells(std::vector<Cell> cells, qint16 least) {
    PlaceCells(cells);
    size_t lines = 1;
    for (const Cell& cell : cells) {
        lines = std::max(lines, cell.wrapped.lines.size());
    }
    EnsureRoom(RoomFor(lines, least));
    const int top = surface_.CurrentY;
    for (Cell& cell : cells) {
        surface_.CurrentY = top;
        PrintCell(cell.wrapped);
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
