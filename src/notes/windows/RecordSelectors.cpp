#include "notes/windows/RecordSelectors.h"

#include "base/windows/Look.h"
#include "notes/windows/BoundModel.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTableView>

namespace velmora {

namespace {

// On a grid of 12 by 12.
QPainterPath CurrentMark() {
    QPainterPath path;
    path.addPolygon(QPolygonF({{3, 1}, {9, 6}, {3, 11}, {3, 1}}));
    return path;
}

QPainterPath PencilMark() {
    QPainterPath path;
    path.addPolygon(QPolygonF({{1, 11}, {2, 8}, {8.5, 1.5}, {10.5, 3.5}, {4, 10}, {1, 11}}));
    return path;
}

QPainterPath NewMark() {
    QPainterPath path;
    for (const auto& [x1, y1, x2, y2] :
         {std::array{6.0, 1.5, 6.0, 10.5}, std::array{2.0, 3.75, 10.0, 8.25}, std::array{2.0, 8.25, 10.0, 3.75}}) {
        path.moveTo(x1, y1);
        path.lineTo(x2, y2);
    }
    return path;
}

} // namespace

RecordSelectors::RecordSelectors(const BoundModel& model, const QList<int>& selection, QWidget* parent)
    : QHeaderView(Qt::Vertical, parent), bound_(model), selection_(selection) {
    setSectionsClickable(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
}

QSize RecordSelectors::sizeHint() const {
    return {fontMetrics().height() + spacing::large, QHeaderView::sizeHint().height()};
}

void RecordSelectors::paintSection(QPainter* painter, const QRect& rect, int row) const {
    const auto* view = static_cast<const QTableView*>(parentWidget());
    const bool selected = selection_.contains(row);
    painter->save();
    painter->setClipRect(rect);
    painter->fillRect(rect, palette().color(selected ? QPalette::Highlight : QPalette::Button));
    painter->setPen(palette().color(QPalette::Mid));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());

    const bool pending = bound_.Rows().PendingRow() == row;
    const bool current = view->currentIndex().row() == row;
    const double size = fontMetrics().height() * 0.8;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.center().x() - size / 2 + 0.5, rect.center().y() - size / 2 + 0.5);
    painter->scale(size / 12, size / 12);
    const QColor colour = palette().color(selected ? QPalette::HighlightedText : QPalette::ButtonText);
    if (pending) {
        painter->fillPath(PencilMark(), colour);
    } else if (bound_.IsNewRow(row)) {
        painter->setPen(QPen(current ? colour : QuietColour(palette()), 1.4, Qt::SolidLine, Qt::RoundCap));
        painter->drawPath(NewMark());
    } else if (current) {
        painter->fillPath(CurrentMark(), colour);
    }
    painter->restore();
}

void RecordSelectors::mousePressEvent(QMouseEvent* event) {
    const int row = logicalIndexAt(event->pos());
    if (event->button() != Qt::LeftButton || row < 0) {
        return;
    }
    dragged_ = row;
    Q_EMIT Pressed(row, event->modifiers());
}

void RecordSelectors::mouseMoveEvent(QMouseEvent* event) {
    const int row = logicalIndexAt(event->pos());
    if (dragged_ >= 0 && row >= 0 && row != dragged_) {
        dragged_ = row;
        Q_EMIT Pressed(row, Qt::ShiftModifier);
    }
}

} // namespace velmora
