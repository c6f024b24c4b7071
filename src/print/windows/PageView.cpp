#include "print/windows/PageView.h"

#include "base/windows/Look.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace velmora::print {

namespace {

constexpr double twipsPerInch = 1440;
constexpr double smallestZoom = 0.1;
constexpr double largestZoom = 8;
constexpr double zoomStep = 1.25;
constexpr int wheelNotch = 120;
// Free ground around a page that is larger than the view.
constexpr int margin = spacing::large;

} // namespace

PageView::PageView(const pages::Document& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document), pagePainter_(document) {
    viewport()->setObjectName(QStringLiteral("picPage"));
    verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
    horizontalScrollBar()->setObjectName(QStringLiteral("HScroll1"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

void PageView::ShowPage(int index) {
    if (index != index_) {
        index_ = index;
        ApplyFit();
        SetUpScrollBars();
        verticalScrollBar()->setValue(0);
    }
    overturn_ = 0;
    viewport()->update();
}

void PageView::ShowBottom() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

double PageView::DotsPerTwip() const {
    return zoom_ * viewport()->logicalDpiX() / twipsPerInch;
}

QSizeF PageView::PaperSize() const {
    const double scale = DotsPerTwip();
    return {CurrentPage().Width() * scale, CurrentPage().Height() * scale};
}

QRectF PageView::PaperRect() const {
    const QSizeF paper = PaperSize();
    const QSize view = viewport()->size();
    const auto place = [](double length, int room, const QScrollBar& bar) {
        return bar.maximum() > 0 ? double{margin} - bar.value() : std::floor(std::max(0.0, (room - length) / 2));
    };
    return {QPointF(place(paper.width(), view.width(), *horizontalScrollBar()),
                    place(paper.height(), view.height(), *verticalScrollBar())),
            paper};
}

void PageView::SetUpScrollBars() {
    const QSizeF paper = PaperSize();
    const QSize whole = maximumViewportSize();
    const int thickness = verticalScrollBar()->sizeHint().width();
    // Each bar takes room from the other direction.
    bool across = paper.width() > whole.width();
    const bool down = paper.height() > whole.height() - (across ? thickness : 0);
    across = paper.width() > whole.width() - (down ? thickness : 0);
    const auto setUp = [](QScrollBar& bar, bool needed, double length, int room) {
        constexpr int arrowStep = 40;
        bar.setRange(0, needed ? static_cast<int>(std::ceil(length)) + 2 * margin - room : 0);
        bar.setPageStep(room);
        bar.setSingleStep(arrowStep);
    };
    setUp(*horizontalScrollBar(), across, paper.width(), whole.width() - (down ? thickness : 0));
    setUp(*verticalScrollBar(), down, paper.height(), whole.height() - (across ? thickness : 0));
}

void PageView::ApplyFit() {
    if (fit_ == Fit::None) {
        return;
    }
    const double perTwip = viewport()->logicalDpiX() / twipsPerInch;
    const QSize whole = maximumViewportSize();
    const pages::Page& page = CurrentPage();
    const auto fitted = [&](int room, int length) { return (room - 2 * margin) / (length * perTwip); };
    double zoom = fitted(whole.width(), page.Width());
    const double byHeight = fitted(whole.height(), page.Height());
    if (fit_ == Fit::Page) {
        zoom = std::min(zoom, byHeight);
    } else if (byHeight < zoom) {
        zoom = fitted(whole.width() - verticalScrollBar()->sizeHint().width(), page.Width());
    }
    zoom = std::clamp(zoom, smallestZoom, largestZoom);
    if (zoom != zoom_) {
        zoom_ = zoom;
        Q_EMIT ZoomChanged();
    }
}

void PageView::ZoomAt(double zoom, QPointF anchor) {
    const QPointF twips = (anchor - PaperRect().topLeft()) / DotsPerTwip();
    zoom_ = std::clamp(zoom, smallestZoom, largestZoom);
    SetUpScrollBars();
    const QPointF target = twips * DotsPerTwip() - anchor + QPointF(margin, margin);
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(target.x())));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(target.y())));
    viewport()->update();
    Q_EMIT ZoomChanged();
}

void PageView::SetZoom(double zoom) {
    fit_ = Fit::None;
    ZoomAt(zoom, QRectF(viewport()->rect()).center());
}

void PageView::ZoomIn() {
    SetZoom(zoom_ * zoomStep);
}

void PageView::ZoomOut() {
    SetZoom(zoom_ / zoomStep);
}

void PageView::SetFit(Fit fit) {
    fit_ = fit;
    ApplyFit();
    SetUpScrollBars();
    viewport()->update();
    Q_EMIT ZoomChanged();
}

void PageView::Mark(const std::vector<pages::TextHit>* hits, int current) {
    hits_ = hits;
    currentHit_ = current;
    viewport()->update();
}

void PageView::RevealCurrentHit() {
    if (hits_ == nullptr || currentHit_ < 0) {
        return;
    }
    const QRect& mark = (*hits_)[static_cast<size_t>(currentHit_)].marks.front();
    const double scale = DotsPerTwip();
    const QRectF shown = QRectF(mark.topLeft() * scale + PaperRect().topLeft(), QSizeF(mark.size()) * scale);
    const auto reveal = [](QScrollBar& bar, double from, double to, int room) {
        if (from < margin || to > room - margin) {
            bar.setValue(bar.value() + static_cast<int>(std::lround((from + to - room) / 2)));
        }
    };
    reveal(*horizontalScrollBar(), shown.left(), shown.right(), viewport()->width());
    reveal(*verticalScrollBar(), shown.top(), shown.bottom(), viewport()->height());
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRectF paper = PaperRect();
    painter.fillRect(event->rect(), palette().color(QPalette::Dark));
    // A shadow of three faint steps: there to lift the page, not to be seen.
    for (int step = 3; step > 0; --step) {
        painter.fillRect(paper.adjusted(-step + 1, 1, step, step + 1), QColor(0, 0, 0, 14));
    }
    painter.fillRect(paper, Qt::white);
    painter.setClipRect(paper.intersected(event->rect()));
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.translate(paper.topLeft());
    painter.scale(DotsPerTwip(), DotsPerTwip());
    const QRectF exposed = painter.transform().inverted().mapRect(QRectF(event->rect()));
    pagePainter_.Draw(painter, CurrentPage(), exposed);
    DrawMarks(painter);
}

void PageView::DrawMarks(QPainter& painter) const {
    if (hits_ == nullptr) {
        return;
    }
    // The ink shows through, on grey boxes too.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    constexpr int around = 12;
    for (size_t i = 0; i < hits_->size(); ++i) {
        const pages::TextHit& hit = (*hits_)[i];
        const bool current = static_cast<int>(i) == currentHit_;
        for (const QRect& mark : hit.page == index_ ? hit.marks : std::vector<QRect>()) {
            const QRect wide = mark.adjusted(-around, 0, around, 0);
            painter.fillRect(wide, current ? QColor(0xff, 0xb3, 0x4d) : QColor(0xff, 0xf0, 0x99));
            if (current) {
                painter.setPen(QPen(QColor(0xb3, 0x5a, 0x00), 0));
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(wide);
            }
        }
    }
}

void PageView::resizeEvent(QResizeEvent*) {
    ApplyFit();
    SetUpScrollBars();
}

void PageView::ScrollToCorner() {
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
}

void PageView::scrollContentsBy(int dx, int dy) {
    Q_UNUSED(dx);
    Q_UNUSED(dy);
    viewport()->update();
}

void PageView::ScrollOrLeave(int direction, int step) {
    QScrollBar& bar = *verticalScrollBar();
    if (bar.value() == (direction > 0 ? bar.maximum() : bar.minimum())) {
        Q_EMIT LeftPage(direction);
    } else {
        bar.setValue(bar.value() + direction * step);
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    const int turn = event->angleDelta().y();
    if (event->modifiers() & Qt::ControlModifier) {
        fit_ = Fit::None;
        ZoomAt(zoom_ * std::pow(zoomStep, static_cast<double>(turn) / wheelNotch), event->position());
        return;
    }
    if (turn == 0 || event->modifiers() != Qt::NoModifier) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    QScrollBar& bar = *verticalScrollBar();
    const int before = bar.value();
    constexpr int dotsPerNotch = 120;
    bar.setValue(before - (event->pixelDelta().isNull() ? turn * dotsPerNotch / wheelNotch : event->pixelDelta().y()));
    // Fine wheels send many small turns; a page is left after a whole notch beyond its end.
    overturn_ = bar.value() != before || (overturn_ < 0) != (turn < 0) ? 0 : overturn_;
    if (bar.value() == before) {
        overturn_ += turn;
    }
    if (std::abs(overturn_) >= wheelNotch) {
        const int direction = overturn_ < 0 ? 1 : -1;
        overturn_ = 0;
        Q_EMIT LeftPage(direction);
    }
}

void PageView::keyPressEvent(QKeyEvent* event) {
    constexpr int lineStep = 40;
    const int screenStep = viewport()->height() - lineStep;
    switch (event->key()) {
    case Qt::Key_PageDown:
        return ScrollOrLeave(1, screenStep);
    case Qt::Key_PageUp:
        return ScrollOrLeave(-1, screenStep);
    case Qt::Key_Space:
        return ScrollOrLeave(event->modifiers() & Qt::ShiftModifier ? -1 : 1, screenStep);
    case Qt::Key_Home:
        return verticalScrollBar()->setValue(0);
    case Qt::Key_End:
        return ShowBottom();
    default:
        return QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressedAt_ = event->position().toPoint();
        scrolledFrom_ = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
        dragging_ = false;
    }
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint moved = event->position().toPoint() - pressedAt_;
    if (!(event->buttons() & Qt::LeftButton) ||
        (!dragging_ && moved.manhattanLength() < QApplication::startDragDistance())) {
        return;
    }
    dragging_ = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    horizontalScrollBar()->setValue(scrolledFrom_.x() - moved.x());
    verticalScrollBar()->setValue(scrolledFrom_.y() - moved.y());
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    viewport()->unsetCursor();
    if (!dragging_ && PaperRect().contains(event->position())) {
        Q_EMIT PageClicked(index_);
    }
    dragging_ = false;
}

} // namespace velmora::print
