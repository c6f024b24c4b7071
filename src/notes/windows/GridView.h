#pragma once

#include <QTableView>

namespace velmora {

class BoundModel;

// What a grid's view asks of the grid around it.
class GridHandler {
public:
    virtual ~GridHandler() = default;
    // Takes what is typed in the open cell editor. False when it was refused and stays open.
    virtual bool CommitCell() = 0;
    // Commits and writes the row; false when the cursor must stay in it.
    virtual bool LeaveRow() = 0;
    // Opens the cell's editor. `typed` replaces the cell's text; null leaves it.
    virtual void EditCell(const QModelIndex& index, const QString& typed) = 0;
    // The cell under the cursor was clicked once more.
    virtual void ClickCell(const QModelIndex& index) = 0;
    virtual void OpenChoices(const QModelIndex& index) = 0;
    virtual void ToggleCell(const QModelIndex& index) = 0;
    // A cell was pressed, and the cursor is there.
    virtual void PressCell(int row, Qt::KeyboardModifiers modifiers) = 0;
    // A key that belongs to the grid as a whole; true when it was one.
    virtual bool GridKey(const QKeyEvent& event) = 0;
};

// The cells of a bound grid: how the cursor moves among them. It enters another row only when the one it leaves was
// stored.
class GridView : public QTableView {
    Q_OBJECT

public:
    GridView(GridHandler& handler, const BoundModel& model, QWidget* parent);

    // Moves the cursor as the keys do; false when it had to stay in its row.
    bool GoTo(int row, int column);
    // To the next or previous cell that can be edited, into the neighbouring row at the end of one. False at the grid's
    // ends.
    bool GoToNextCell(int step);
    void GoDown();
    void keyboardSearch(const QString&) override {}

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent*) override {}
    void mouseReleaseEvent(QMouseEvent*) override {}
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    bool MovingKey(const QKeyEvent& event);
    bool CellKey(const QKeyEvent& event);
    bool TypedKey(const QKeyEvent& event);

    GridHandler& handler_;
    const BoundModel& bound_;
};

} // namespace velmora
