#pragma once

#include "platform/pages/PagePainter.h"
#include "platform/pages/PageSearch.h"

#include <QAbstractScrollArea>
#include <QPoint>

namespace velmora::print {

// The preview's page surface: shows one page of a document at a time on a quiet ground, replayed from its list at the
// screen's own resolution at every zoom. Its scroll bars are there where the page is larger than the view.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Fit { None, Width, Page };

    // The document outlives the view and does not change.
    explicit PageView(const pages::Document& document, QWidget* parent = nullptr);

    // Shows the page of that index, from its top.
    void ShowPage(int index);
    void ShowBottom();
    void ScrollToCorner();

    // 1 is true size.
    double Zoom() const { return zoom_; }
    void SetZoom(double zoom);
    void ZoomIn();
    void ZoomOut();
    void SetFit(Fit fit);

    // Marks hits, of which those on the page shown are drawn; `current` is an index into them, or -1. They must
    // outlive their being marked.
    void Mark(const std::vector<pages::TextHit>* hits, int current);
    // Scrolls so far that the current hit is in view.
    void RevealCurrentHit();

    // The page's place in the view, in its own dots.
    QRectF PaperRect() const;

Q_SIGNALS:
    void PageClicked(int index);
    void ZoomChanged();
    // A key or the wheel went beyond the page's end (1) or its beginning (-1).
    void LeftPage(int direction);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    const pages::Page& CurrentPage() const { return document_.pages[static_cast<size_t>(index_)]; }
    double DotsPerTwip() const;
    QSizeF PaperSize() const;
    void ApplyFit();
    void SetUpScrollBars();
    // Changes the zoom; what is at `anchor` stays there.
    void ZoomAt(double zoom, QPointF anchor);
    void ScrollOrLeave(int direction, int step);
    void DrawMarks(QPainter& painter) const;

    const pages::Document& document_;
    pages::PagePainter pagePainter_;
    int index_ = 0;
    double zoom_ = 1;
    Fit fit_ = Fit::None;
    const std::vector<pages::TextHit>* hits_ = nullptr;
    int currentHit_ = -1;
    // Wheel turns gathered beyond the page's end, in eighths of a degree.
    int overturn_ = 0;
    QPoint pressedAt_;
    QPoint scrolledFrom_;
    bool dragging_ = false;
};

} // namespace velmora::print
