#include "notes/windows/GridView.h"

#include "notes/windows/BoundModel.h"
#include "notes/windows/GridDelegate.h"

#include <QHeaderView>
#include <QMouseEvent>

namespace velmora {

GridView::GridView(GridHandler& handler, const BoundModel& model, QWidget* parent)
    : QTableView(parent), handler_(handler), bound_(model) {
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    setWordWrap(false);
    setCornerButtonEnabled(false);
}

bool GridView::GoTo(int row, int column) {
    const QModelIndex to = bound_.index(row, column);
    if (!to.isValid() || !handler_.CommitCell()) {
        return false;
    }
    if (currentIndex().isValid() && row != currentIndex().row() && !handler_.LeaveRow()) {
        return false;
    }
    // Storing the row may have put another one in its place.
    setCurrentIndex(bound_.index(std::min(row, bound_.rowCount() - 1), column));
    return true;
}

bool GridView::GoToNextCell(int step) {
    const int columns = bound_.columnCount();
    int cell = currentIndex().row() * columns + currentIndex().column();
    do {
        cell += step;
        if (cell < 0 || cell >= columns * bound_.rowCount()) {
            return false;
        }
    } while (bound_.CanAdd() && !bound_.CanEdit(cell % columns));
    GoTo(cell / columns, cell % columns);
    return true;
}

void GridView::GoDown() {
    const QModelIndex from = currentIndex();
    // In the empty row the record that was typed is stored first, and the row behind it is the next one.
    const bool inLast = from.row() + 1 >= bound_.rowCount();
    if (inLast && !handler_.LeaveRow()) {
        return;
    }
    if (from.row() + 1 < bound_.rowCount()) {
        GoTo(from.row() + 1, from.column());
    }
}

QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex from = currentIndex();
    QModelIndex to = QTableView::moveCursor(action, modifiers);
    if (!to.isValid() || !from.isValid() || to.row() == from.row()) {
        return to;
    }
    const int row = to.row();
    const int column = to.column();
    return handler_.LeaveRow() ? bound_.index(std::min(row, bound_.rowCount() - 1), column) : currentIndex();
}

bool GridView::MovingKey(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (bound_.CanAdd()) {
            GoDown();
        }
        return bound_.CanAdd();
    case Qt::Key_Tab:
        if (event.modifiers().testFlag(Qt::ControlModifier)) {
            focusNextChild();
            return true;
        }
        return GoToNextCell(1);
    case Qt::Key_Backtab:
        if (event.modifiers().testFlag(Qt::ControlModifier)) {
            focusPreviousChild();
            return true;
        }
        return GoToNextCell(-1);
    default:
        return false;
    }
}

bool GridView::CellKey(const QKeyEvent& event) {
    const bool alt = event.modifiers().testFlag(Qt::AltModifier);
    if (event.key() == Qt::Key_F2) {
        handler_.EditCell(currentIndex(), {});
        return true;
    }
    if (event.key() == Qt::Key_Backspace && event.modifiers() == Qt::NoModifier) {
        handler_.EditCell(currentIndex(), QStringLiteral(""));
        return true;
    }
    if (event.key() == Qt::Key_F4 || (alt && event.key() == Qt::Key_Down)) {
        handler_.OpenChoices(currentIndex());
        return true;
    }
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier &&
        bound_.Column(currentIndex().column()).kind == CellKind::YesNo) {
        handler_.ToggleCell(currentIndex());
        return true;
    }
    return false;
}

bool GridView::TypedKey(const QKeyEvent& event) {
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool altGr = event.modifiers() == (Qt::ControlModifier | Qt::AltModifier);
    const bool letter = !event.text().isEmpty() && QChar::isPrint(event.text().toUcs4().front());
    if ((command && !altGr) || !letter) {
        return false;
    }
    handler_.EditCell(currentIndex(), event.text());
    return true;
}

void GridView::inputMethodEvent(QInputMethodEvent* event) {
    if (currentIndex().isValid() && !event->commitString().isEmpty()) {
        handler_.EditCell(currentIndex(), event->commitString());
    }
    event->accept();
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (handler_.GridKey(*event)) {
        return;
    }
    if (MovingKey(*event)) {
        return;
    }
    const bool returns = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (returns || event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        // At the grid's end Tab goes on to the window's next control; Return in a list is for its default button.
        event->ignore();
        return;
    }
    if (currentIndex().isValid() && (CellKey(*event) || TypedKey(*event))) {
        return;
    }
    QTableView::keyPressEvent(event);
}

void GridView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !at.isValid()) {
        if (event->button() == Qt::LeftButton) {
            handler_.CommitCell();
        }
        return;
    }
    const int row = at.row();
    const int column = at.column();
    const bool wasCurrent = at == currentIndex();
    if (!GoTo(row, column) || currentIndex().row() != row) {
        return;
    }
    handler_.PressCell(row, event->modifiers());
    if (event->modifiers() != Qt::NoModifier) {
        return;
    }
    if (bound_.Column(column).kind != CellKind::YesNo) {
        if (wasCurrent) {
            handler_.ClickCell(currentIndex());
        }
        return;
    }
    const QRect box = GridDelegate::BoxRect(visualRect(currentIndex()), *this);
    if (box.adjusted(-4, -4, 4, 4).contains(event->pos())) {
        handler_.ToggleCell(currentIndex());
    }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && at.isValid() && at == currentIndex()) {
        if (bound_.Column(at.column()).kind == CellKind::YesNo) {
            mousePressEvent(event);
        } else {
            handler_.EditCell(at, {});
        }
    }
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    // Letters that are put together from several keys arrive by way of the input method.
    setAttribute(Qt::WA_InputMethodEnabled, current.isValid() && bound_.CanEdit(current.column()));
    verticalHeader()->viewport()->update();
    // The frame of the cell is drawn by the cells themselves.
    viewport()->update();
}

} // namespace velmora
