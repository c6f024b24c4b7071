#include "print/pages/PageSurface.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

QString OnPage(Text text) {
    QString shown = text.toString();
    const auto isControl = [](QChar c) { return c < u' ' && c != u'\n' && c != u'\r'; };
    if (std::any_of(shown.cbegin(), shown.cend(), isControl)) {
        std::replace_if(shown.begin(), shown.end(), isControl, QChar(u' '));
    }
    return shown;
}

PageSurface::PageSurface(pages::Document& document, const PageGeometry& geometry, const pages::FontSpec& font)
    : document_(document), geometry_(geometry) {
    SetFont(font);
    StartPage();
}

void PageSurface::SetFont(const pages::FontSpec& font) {
    font_ = document_.FontIndex(font);
    if (font_ >= fonts_.size()) {
        fonts_.push_back(std::make_unique<pages::PageFont>(font));
    }
}

namespace {

// One line of at most `width` from the beginning of `text`, which has no line end in it.
QStringView FirstLine(QStringView text, int width, const pages::PageFont& font) {
    double used = 0;
    qsizetype behindBlank = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype letter = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        used += font.Advance(text.mid(i, letter));
        // Widths are told in whole twips: a text fits the width that it was measured to have.
        if (used >= width + 0.5) {
            // A word wider than the line is broken inside; every line takes at least one letter.
            return text.first(behindBlank > 0 ? behindBlank : std::max(i, letter));
        }
        i += letter - 1;
        if (text[i] == u' ') {
            behindBlank = i + 1;
        }
    }
    return text;
}

} // namespace

std::vector<QStringView> PageSurface::Wrap(QStringView text, int width) const {
    const pages::PageFont& font = *fonts_[font_];
    std::vector<QStringView> lines;
    qsizetype start = 0;
    while (start <= text.size()) {
        qsizetype end = text.indexOf(u'\n', start);
        end = end < 0 ? text.size() : end;
        QStringView paragraph = text.sliced(start, end - start);
        if (paragraph.endsWith(u'\r')) {
            paragraph.chop(1);
        }
        do {
            const QStringView line = FirstLine(paragraph, width, font);
            lines.push_back(line);
            paragraph = paragraph.sliced(line.size());
        } while (!paragraph.isEmpty());
        start = end + 1;
    }
    // A line end at the end of the text adds no empty line.
    if (lines.size() > 1 && lines.back().isEmpty()) {
        lines.pop_back();
    }
    return lines;
}

QStringView PageSurface::Fitting(QStringView line, int width) const {
    const pages::PageFont& font = *fonts_[font_];
    double used = 0;
    qsizetype end = 0;
    while (end < line.size()) {
        const qsizetype letter = line[end].isHighSurrogate() && end + 1 < line.size() ? 2 : 1;
        used += font.Advance(line.mid(end, letter));
        if (std::lround(used) > width) {
            break;
        }
        end += letter;
    }
    return line.first(end);
}

void PageSurface::Print(QStringView text) {
    if (text.isEmpty()) {
        return;
    }
    const int width = TextWidth(text);
    CurrentPage().AddText(static_cast<quint16>(font_), geometry_.left + CurrentX, geometry_.top + CurrentY, width,
                          LineHeight(), text);
    lowest_ = std::max(lowest_, CurrentY + LineHeight());
    Reach(lowest_);
    CurrentX += width;
}

void PageSurface::EndLine() {
    CurrentX = 0;
    CurrentY += LineHeight();
}

int PageSurface::PenTwips() const {
    return static_cast<int>(std::lround(DrawWidth * geometry_.twipsPerPen));
}

void PageSurface::DrawLineTo(int x, int y) {
    CurrentPage().AddLine(geometry_.left + CurrentX, geometry_.top + CurrentY, geometry_.left + x, geometry_.top + y,
                          PenTwips());
    Reach(std::max(CurrentY, y));
    CurrentX = x;
    CurrentY = y;
}

void PageSurface::DrawRule(int x, int y, int width, int thickness) {
    DrawWidth = thickness;
    CurrentX = x;
    CurrentY = y;
    DrawLineTo(x + width, y);
}

void PageSurface::DrawBox(int dx, int dy, int width, int height) {
    CurrentPage().AddBox(geometry_.left + CurrentX + dx, geometry_.top + CurrentY + dy, width, height, FillStyle,
                         PenTwips());
    lowest_ = std::max(lowest_, CurrentY + dy + height);
    Reach(lowest_);
}

void PageSurface::AddDots(int dots) {
    CurrentY += static_cast<int>(std::lround(dots * geometry_.twipsPerDot));
}

void PageSurface::StartPage() {
    if (!document_.pages.empty()) {
        CurrentPage().Shrink();
    }
    document_.pages.emplace_back(geometry_.paperWidth, geometry_.paperHeight);
    CurrentX = 0;
    CurrentY = 0;
    lowest_ = 0;
}

void PageSurface::Reach(int bottom) {
    const int bottomMargin = geometry_.paperHeight - geometry_.top - geometry_.height;
    CurrentPage().GrowTo(geometry_.top + bottom + bottomMargin);
}

} // namespace velmora::print
