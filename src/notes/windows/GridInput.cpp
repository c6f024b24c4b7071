// What keys and the mouse do in a bound grid: the cursor, the commands and the selection of rows.
#include "base/Steps.h"
#include "notes/windows/GridDelegate.h"
#include "notes/windows/GridView.h"
#include "notes/windows/RecordSelectors.h"

#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <numeric>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

// A cell among others in a text for the clipboard, as spreadsheets write and read it.
QString ClipboardCell(QString text) {
    if (text.contains(u'\t') || text.contains(u'\n') || text.contains(u'"')) {
        text.replace(u"\""_s, u"\"\""_s);
        return u'"' + text + u'"';
    }
    return text;
}

} // namespace

bool GridView::GoTo(int row, int column) {
    const QModelIndex to = model_.index(row, column);
    if (!to.isValid() || !CommitCell()) {
        return false;
    }
    if (currentIndex().isValid() && row != currentIndex().row() && !UpdateRow()) {
        return false;
    }
    // Storing the row may have put another one in its place.
    PutCursor(row, column);
    return true;
}

bool GridView::GoToNextCell(int step) {
    const int columns = model_.columnCount();
    int cell = currentIndex().row() * columns + currentIndex().column();
    do {
        cell += step;
        if (cell < 0 || cell >= columns * model_.rowCount()) {
            return false;
        }
    } while (model_.CanAdd() && !model_.CanEdit(cell % columns));
    GoTo(cell / columns, cell % columns);
    return true;
}

void GridView::GoDown() {
    const QModelIndex from = currentIndex();
    // In the empty row the record that was typed is stored first, and the row behind it is the next one.
    const bool inLast = from.row() + 1 >= model_.rowCount();
    if (inLast && !UpdateRow()) {
        return;
    }
    if (from.row() + 1 < model_.rowCount()) {
        GoTo(from.row() + 1, from.column());
    }
}

void GridView::GoToEnd(int key) {
    if (rows_.Count() > 0 && UpdateRow()) {
        PutCursor(key == Qt::Key_PageUp ? 0 : rows_.Count() - 1, currentIndex().column());
    }
}

QModelIndex GridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex from = currentIndex();
    const QModelIndex to = QTableView::moveCursor(action, modifiers);
    const int row = to.row();
    const int column = to.column();
    if (!to.isValid() || !from.isValid()) {
        return to;
    }
    const bool left = row == from.row() ? CommitCell() : UpdateRow();
    return left ? model_.index(std::min(row, model_.rowCount() - 1), column) : currentIndex();
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    // Letters that are put together from several keys arrive by way of the input method.
    setAttribute(Qt::WA_InputMethodEnabled, current.isValid() && model_.CanEdit(current.column()));
    // The marks of the row and the frame of the cell are drawn by these themselves.
    selectors_->viewport()->update();
    viewport()->update();
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (GridKey(*event) || MovingKey(*event)) {
        return;
    }
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        // At the grid's end Tab goes on to the window's next control; Return in a list is for its default button.
        event->ignore();
    } else if (!currentIndex().isValid() || (!CellKey(*event) && !TypedKey(*event))) {
        QTableView::keyPressEvent(event);
    }
}

bool GridView::GridKey(const QKeyEvent& event) {
    const bool modified = event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    switch (event.key()) {
    case Qt::Key_Delete:
        DeleteSelected();
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (modified) {
            GoToEnd(event.key());
        }
        return modified;
    case Qt::Key_Escape:
        return EscapeKey();
    case Qt::Key_Space:
        // In a list that is only read the bar alone does it too.
        if (event.modifiers() == Qt::ShiftModifier || !model_.CanAdd()) {
            PressRow(currentIndex().row(), Qt::ControlModifier);
            return true;
        }
        return false;
    default:
        return CommandKey(event);
    }
}

bool GridView::EscapeKey() {
    if (Editor() != nullptr) {
        CloseEditor();
        return true;
    }
    const auto row = rows_.PendingRow();
    if (row) {
        rows_.Undo();
        model_.RowChanged(*row);
    }
    return row.has_value();
}

bool GridView::CommandKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy)) {
        Copy();
    } else if (event.matches(QKeySequence::Paste)) {
        Paste();
    } else if (event.matches(QKeySequence::SelectAll)) {
        SelectAll();
    } else {
        return false;
    }
    return true;
}

bool GridView::MovingKey(const QKeyEvent& event) {
    const bool tab = event.key() == Qt::Key_Tab;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (model_.CanAdd()) {
            GoDown();
        }
        return model_.CanAdd();
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (event.modifiers().testFlag(Qt::ControlModifier)) {
            // The table's own would go on to the next cell. NOLINTNEXTLINE(bugprone-parent-virtual-call)
            QAbstractScrollArea::focusNextPrevChild(tab);
            return true;
        }
        return GoToNextCell(tab ? 1 : -1);
    default:
        return false;
    }
}

bool GridView::CellKey(const QKeyEvent& event) {
    const bool plain = event.modifiers() == Qt::NoModifier;
    const bool alt = event.modifiers().testFlag(Qt::AltModifier);
    if (event.key() == Qt::Key_F2) {
        EditCell({});
    } else if (event.key() == Qt::Key_Backspace && plain) {
        EditCell(u""_s);
    } else if (event.key() == Qt::Key_F4 || (alt && event.key() == Qt::Key_Down)) {
        OpenChoices();
    } else if (event.key() == Qt::Key_Space && plain &&
               model_.Column(currentIndex().column()).kind == CellKind::YesNo) {
        ToggleCell();
    } else {
        return false;
    }
    return true;
}

bool GridView::TypedKey(const QKeyEvent& event) {
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool altGr = event.modifiers() == (Qt::ControlModifier | Qt::AltModifier);
    const bool letter = !event.text().isEmpty() && QChar::isPrint(event.text().toUcs4().front());
    if ((command && !altGr) || !letter) {
        return false;
    }
    EditCell(event.text());
    return true;
}

void GridView::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty()) {
        EditCell(event->commitString());
    }
    event->accept();
}

void GridView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    const int row = at.row();
    const bool wasCurrent = at == currentIndex();
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (!at.isValid()) {
        CommitCell();
    } else if (GoTo(row, at.column()) && currentIndex().row() == row) {
        PressCell(row, event->modifiers());
        if (event->modifiers() == Qt::NoModifier) {
            ClickCell(event->pos(), wasCurrent);
        }
    }
}

void GridView::ClickCell(QPoint place, bool again) {
    const CellKind kind = model_.Column(currentIndex().column()).kind;
    if (kind == CellKind::YesNo) {
        const QRect box = GridDelegate::BoxRect(visualRect(currentIndex()), *this);
        if (box.adjusted(-4, -4, 4, 4).contains(place)) {
            ToggleCell();
        }
    } else if (again) {
        EditCell({});
        // A short entry is typed over. A text of several lines would be lost to one wrong key.
        if (Editor() != nullptr && kind != CellKind::Lines) {
            GridDelegate::SelectText(*Editor());
        }
    }
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex at = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && at.isValid() && at == currentIndex()) {
        if (model_.Column(at.column()).kind == CellKind::YesNo) {
            mousePressEvent(event);
        } else {
            EditCell({});
        }
    }
}

void GridView::DeleteSelected() {
    if (selection_.isEmpty() || !model_.CanAdd()) {
        return;
    }
    const auto pending = rows_.PendingRow();
    if (pending && !selection_.contains(*pending) && !UpdateRow()) {
        return;
    }
    const QScopedValueRollback asking(asking_, true);
    if (keeper_.Delete(selection_)) {
        Steps steps(program_.services().errors, module_, u"Keyboard Trap"_s);
        steps.Step(u"Delete Rows"_s, [this] { Requery(); });
    }
}

void GridView::Copy() {
    QStringList lines;
    for (const int row : selection_) {
        QStringList cells;
        for (int column = 0; column < model_.columnCount(); ++column) {
            cells.append(ClipboardCell(model_.index(row, column).data().toString()));
        }
        lines.append(cells.join(u'\t'));
    }
    if (lines.isEmpty()) {
        lines.append(currentIndex().data().toString());
    }
    QApplication::clipboard()->setText(lines.join(u'\n'));
}

void GridView::Paste() {
    const QString text = QApplication::clipboard()->text();
    if (!text.isEmpty()) {
        EditCell(text);
    }
}

void GridView::ShowSelection() {
    viewport()->update();
    selectors_->viewport()->update();
}

void GridView::SelectAll() {
    selection_.resize(rows_.Count());
    std::iota(selection_.begin(), selection_.end(), 0);
    ShowSelection();
}

void GridView::ClearSelection() {
    selection_.clear();
    ShowSelection();
}

void GridView::SelectRow(int row, Qt::KeyboardModifiers modifiers) {
    if (!modifiers.testFlag(Qt::ControlModifier)) {
        selection_.clear();
    }
    const bool range = modifiers.testFlag(Qt::ShiftModifier);
    if (!range) {
        anchor_ = row;
    }
    // The empty row cannot be selected.
    if (row < rows_.Count() && range) {
        SelectRange(std::min(anchor_, rows_.Count() - 1), row);
    } else if (row < rows_.Count() && !selection_.removeOne(row)) {
        selection_.append(row);
    }
    ShowSelection();
}

void GridView::SelectRange(int from, int to) {
    const int step = from < to ? 1 : -1;
    for (int row = from; row != to + step; row += step) {
        if (!selection_.contains(row)) {
            selection_.append(row);
        }
    }
}

void GridView::PressRow(int row, Qt::KeyboardModifiers modifiers) {
    setFocus();
    if (GoTo(row, std::max(0, currentIndex().column()))) {
        SelectRow(row, modifiers);
    }
}

void GridView::PressCell(int row, Qt::KeyboardModifiers modifiers) {
    // A list that is only read is chosen from anywhere in its rows.
    if (modifiers != Qt::NoModifier || !model_.CanAdd()) {
        PressRow(row, modifiers);
    } else {
        anchor_ = row;
        ClearSelection();
    }
}

} // namespace velmora
