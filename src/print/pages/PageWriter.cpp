#include "print/pages/PageWriter.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

namespace {

// Free space kept between a column's text and the next column.
constexpr int columnGap = 80;
// How far boxes reach around their text.
constexpr int boxMargin = 20;

} // namespace

PageWriter::PageWriter(JobState& state, PageTarget target, const QString& documentName)
    : state_(state), target_(std::move(target)), document_{documentName, {}, {}},
      surface_(document_, target_.geometry, target_.font) {}

void PageWriter::NewPage() {
    const int closing = surface_.PageCount();
    if (target_.pageLimit > 0 && closing >= target_.pageLimit) {
        target_.refusePage();
        return;
    }
    surface_.CurrentY = surface_.Height() - (surface_.LineHeight() + 20);
    surface_.CurrentX = surface_.Width() / 2;
    surface_.Print(QString::number(closing));
    surface_.StartPage();
}

bool PageWriter::HasRoom(int lines) const {
    return (surface_.LineHeight() + 20) * lines <= surface_.Height() - surface_.CurrentY;
}

void PageWriter::EnsureRoom(qint16 lines) {
    constexpr int topOfPage = 100;
    if (!state_.SuppressPageBreaks && !HasRoom(lines) && surface_.CurrentY > topOfPage) {
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
    const pages::FontSpec before = surface_.Font();
    if (surface_.CurrentY > surface_.Height() / 2) {
        NewPage();
    }
    PrintRule(5, 20, 20);
    PrintRule(5, 20, 20);
    AddVerticalSpace(50);

    pages::FontSpec large = before;
    large.points = std::round(before.points) * 1.5;
    large.bold = true;
    large.italic = true;
    surface_.SetFont(large);
    PrintWrapped(title.toString(), 0, surface_.Width());
    // The subtitle begins at the next print zone of 14 columns, on the title's line where it fits.
    const QString second = subtitle.toString();
    const int zone = 14 * surface_.TextWidth(u"0");
    surface_.CurrentX = (surface_.CurrentX / zone + 1) * zone;
    large.italic = before.italic;
    surface_.SetFont(large);
    if (surface_.CurrentX + surface_.TextWidth(second) > surface_.Width()) {
        surface_.EndLine();
    }
    PrintWrapped(second, surface_.CurrentX, surface_.Width());
    surface_.EndLine();

    AddVerticalSpace(20);
    pages::FontSpec after = before;
    after.points = std::round(before.points);
    surface_.SetFont(after);
    PrintWrapped(secondLine.toString(), 0, surface_.Width());
    surface_.EndLine();
    PrintRule(5, 20, 20);
    PrintRule(5, 20, 20);
    AddVerticalSpace(20);
}

void PageWriter::PrintWrapped(QStringView text, int x, int right) {
    const std::vector<QStringView> lines = surface_.Wrap(text, right - x);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) {
            surface_.EndLine();
        }
        surface_.CurrentX = x;
        surface_.Print(lines[i]);
    }
}

void PageWriter::PrintSectionHeading(Text text, int x) {
    const pages::FontSpec before = surface_.Font();
    EnsureRoom(4);
    surface_.CurrentX = x;
    PrintRule(5, 60, 15);
    Restyle(true, true, before.underline);
    PrintWrapped(text.toString(), x, surface_.Width());
    surface_.EndLine();
    AddVerticalSpace(40);
    surface_.SetFont(before);
}

void PageWriter::PrintParagraph(Text text) {
    if (text.isEmpty()) {
        return;
    }
    const QString whole = text.toString();
    for (const QStringView line : surface_.Wrap(whole, surface_.Width() - state_.TabStop1)) {
        EnsureRoom(2);
        surface_.CurrentX = state_.TabStop1;
        surface_.Print(line);
        surface_.EndLine();
    }
}

PageWriter::Pair PageWriter::LeftPair(int right) const {
    return {state_.TabStop1, state_.TabStop2, right, static_cast<int>(surface_.Width() * 0.2) - boxMargin, 15};
}

PageWriter::Pair PageWriter::RightPair() const {
    return {state_.TabStop3, state_.TabStop4, surface_.Width(), static_cast<int>(surface_.Width() * 0.2) - boxMargin,
            15};
}

qint16 PageWriter::StyleOf(const QString& label, std::optional<qint16> style) const {
    return style ? *style : state_.attributes.Lookup(label);
}

void PageWriter::PrintLabelCell(const QString& label, const Pair& pair) {
    surface_.CurrentX = pair.label;
    if (state_.LeaderStyle == 1) {
        surface_.DrawWidth = 1;
        surface_.DrawBox(-boxMargin, -boxMargin, pair.labelBox, surface_.LineHeight() + 25);
    }
    pages::FontSpec font = surface_.Font();
    font.bold = true;
    surface_.SetFont(font);
    surface_.Print(label);
    if (state_.LeaderStyle == 2) {
        const int top = surface_.CurrentY;
        surface_.DrawWidth = 1;
        surface_.CurrentY += surface_.LineHeight();
        surface_.DrawLineTo(pair.value, surface_.CurrentY);
        surface_.CurrentY = top;
    }
}

void PageWriter::PrintValueCell(const QString& value, qint16 style, const Pair& pair) {
    surface_.CurrentX = pair.value;
    surface_.FillStyle = (style & GreyBox) != 0 ? pages::Fill::Grey : pages::Fill::None;
    const std::vector<QStringView> lines = surface_.Wrap(value, pair.right - pair.value);
    if ((style & GreyBox) != 0 || state_.LeaderStyle == 1) {
        int widest = 0;
        for (const QStringView line : lines) {
            widest = std::max(widest, surface_.TextWidth(line));
        }
        surface_.DrawWidth = 1;
        surface_.DrawBox(-boxMargin, -boxMargin, widest + 2 * boxMargin,
                         surface_.LineHeight() * static_cast<int>(lines.size()) + 25);
    }
    for (const QStringView line : lines) {
        surface_.CurrentX = pair.value;
        surface_.Print(line);
        surface_.EndLine();
    }
}

void PageWriter::PrintPair(const QString& label, const QString& value, qint16 style, const Pair& pair) {
    const pages::FontSpec before = surface_.Font();
    PrintLabelCell(label, pair);
    Restyle(before.bold || (style & Bold) != 0, before.italic || (style & Italic) != 0,
            before.underline || (style & Underlined) != 0);
    PrintValueCell(value, style, pair);
    surface_.SetFont(before);
    AddVerticalSpace(pair.spaceBelow);
}

void PageWriter::PrintLabelValue(Text label, Text value, std::optional<qint16> style) {
    EnsureRoom(5);
    const QString caption = label.toString();
    PrintPair(caption, value.toString(), StyleOf(caption, style),
              state_.RightPair ? RightPair() : LeftPair(surface_.Width()));
}

void PageWriter::PrintWideLabelValue(Text label, Text value, std::optional<qint16> style) {
    EnsureRoom(5);
    const QString caption = label.toString();
    const Pair pair{state_.TabStop1, state_.TabStop3, surface_.Width(),
                    static_cast<int>(surface_.Width() * 0.4) - boxMargin, 20};
    PrintPair(caption, value.toString(), StyleOf(caption, style), pair);
}

void PageWriter::PrintTwoLabelValues(Text label1, Text value1, Text label2, Text value2, std::optional<qint16> style) {
    // Breaks before the first pair or not at all, so that both stand on one line.
    EnsureRoom(5);
    const int top = surface_.CurrentY;
    const QString caption1 = label1.toString();
    const QString caption2 = label2.toString();
    PrintPair(caption1, value1.toString(), StyleOf(caption1, {}), LeftPair(state_.TabStop3 - columnGap));
    const int bottom = surface_.CurrentY;
    surface_.CurrentY = top;
    PrintPair(caption2, value2.toString(), StyleOf(caption2, style), RightPair());
    surface_.CurrentY = std::max(surface_.CurrentY, bottom);
}

void PageWriter::PrintCells(const std::vector<Cell>& cells) {
    const int top = surface_.CurrentY;
    int bottom = top + surface_.LineHeight();
    for (size_t i = 0; i < cells.size(); ++i) {
        const Cell& cell = cells[i];
        if (cell.text.isEmpty()) {
            continue;
        }
        const auto next = std::find_if(cells.begin() + static_cast<std::ptrdiff_t>(i) + 1, cells.end(),
                                       [](const Cell& other) { return !other.text.isEmpty(); });
        const int width = surface_.TextWidth(cell.text);
        const int left = cell.endsAtRight ? std::max(cell.x, surface_.Width() - width) : cell.x;
        int right = surface_.Width();
        if (next != cells.end()) {
            const int nextLeft =
                next->endsAtRight ? std::max(next->x, surface_.Width() - surface_.TextWidth(next->text)) : next->x;
            right = std::max(nextLeft - columnGap, left + 1);
        }
        surface_.CurrentY = top;
        PrintWrapped(cell.text, left, right);
        bottom = std::max(bottom, surface_.CurrentY + surface_.LineHeight());
    }
    surface_.CurrentX = 0;
    surface_.CurrentY = bottom;
}

void PageWriter::PrintTableRow(Text c1, Text c2, Text c3, Text c4) {
    EnsureRoom(3);
    PrintCells({{state_.TabStop1, c1.toString()},
                {state_.TabStop2, c2.toString()},
                {state_.TabStop3, c3.toString()},
                {state_.TabStop3, c4.toString(), true}});
}

void PageWriter::PrintTableRow5(Text c0, Text c1, Text c2, Text c3, Text c4) {
    EnsureRoom(4);
    pages::FontSpec font = surface_.Font();
    font.bold = false;
    surface_.SetFont(font);
    const QString last = c4.toString();
    const bool tooWide = surface_.TextWidth(last) > surface_.Width() - state_.TabStop4;
    PrintCells({{0, c0.toString()},
                {state_.TabStop1, c1.toString()},
                {state_.TabStop2, c2.toString()},
                {state_.TabStop3, c3.toString()},
                {tooWide ? state_.TabStop3 : state_.TabStop4, last, tooWide}});
}

} // namespace velmora::print
