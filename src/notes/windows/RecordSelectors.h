#pragma once

#include <QHeaderView>

namespace velmora {

class BoundModel;

// The record selectors at the left of each row: a mark for the current row, the row being edited and the empty one,
// and where rows are selected with the mouse.
class RecordSelectors : public QHeaderView {
    Q_OBJECT

public:
    // Model and selection outlive it.
    RecordSelectors(const BoundModel& model, const QList<int>& selection, QWidget* parent);

    QSize sizeHint() const override;
Q_SIGNALS:
    // A row's selector was pressed, or the pointer was dragged onto it (with Shift then).
    void Pressed(int row, Qt::KeyboardModifiers modifiers);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int row) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override { dragged_ = -1; }

private:
    const BoundModel& bound_;
    const QList<int>& selection_;
    // The row that the pressed pointer is on; -1 while it is not pressed.
    int dragged_ = -1;
};

} // namespace velmora
