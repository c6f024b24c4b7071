#include "print/windows/SampleView.h"

#include "base/windows/Look.h"
#include "print/pages/PageWriter.h"

#include <QPainter>

#include <algorithm>

namespace velmora::print {

namespace {

constexpr int inch = 1440;
constexpr int columnWidth = inch;
constexpr int edge = 100;
constexpr int sampleWidth = 2 * columnWidth + inch / 4;
constexpr int sampleHeight = 420;

} // namespace

pages::Document SampleDocument(const Sample& sample) {
    JobState state;
    state.LeaderStyle = sample.leaderStyle;
    state.TabStops = {edge, edge + columnWidth, 0, 0};
    // Five columns, as on a page; the sample shows the two that the line takes.
    PageTarget target;
    target.geometry = {sampleWidth, sampleHeight, 0, 0, 5 * columnWidth, sampleHeight};
    target.font = {QStringLiteral("Liberation Sans"), 10, false, false, false, false};
    state.SuppressPageBreaks = true;
    PageWriter writer(state, target, {});
    writer.AddVerticalSpace(edge / 3);
    writer.PrintLabelValue(sample.caption, sample.value, sample.style);
    return writer.Pages();
}

void DrawSample(QPainter& painter, const QRect& rect, const pages::Document& document, int dotsPerInch) {
    painter.save();
    painter.fillRect(rect, Qt::white);
    painter.setClipRect(rect);
    const pages::Page& page = document.pages.front();
    // A caption of several lines is shown whole, if smaller.
    const double scale =
        std::min(static_cast<double>(dotsPerInch) / inch, static_cast<double>(rect.height()) / page.Height());
    painter.translate(rect.left(), rect.top() + (rect.height() - page.Height() * scale) / 2);
    painter.scale(scale, scale);
    pages::PagePainter(document).Draw(painter, page);
    painter.restore();
}

SampleView::SampleView(const Sample& sample, QWidget* parent) : QWidget(parent), document_(SampleDocument(sample)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(sample.caption + u' ' + sample.value);
}

QSize SampleView::sizeHint() const {
    return {sampleWidth * logicalDpiX() / inch, sampleHeight * logicalDpiY() / inch};
}

void SampleView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawSample(painter, rect(), document_, logicalDpiX());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace velmora::print
