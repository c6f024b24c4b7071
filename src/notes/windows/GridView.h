#pragma once

#include "notes/RowKeeper.h"
#include "notes/windows/BoundModel.h"

#include <QTableView>

namespace velmora {

class GridDelegate;
class RecordSelectors;

// The cells of a bound grid: the cursor, the editing of cells and rows, and the selection of rows.
//
// The view alone closes an editor. Whatever leaves a cell (a key, a click, the focus that goes to another control, the
// window's end) goes through CommitCell, and whatever leaves a row through UpdateRow. Where these return false, what
// was typed stays as it is and the leaving ends there. Escape gives up the cell first, then the row.
class GridView : public QTableView {
    Q_OBJECT

public:
    // Program and rules outlive the view. `module` is the window's name in error reports.
    GridView(const Program& program, BoundRows rows, RowRules& rules, QString module, QWidget* parent);
    ~GridView() override;
    Q_DISABLE_COPY_MOVE(GridView)

    BoundRows& Rows() { return rows_; }
    const BoundModel& Model() const { return model_; }
    const CellText& Texts() const { return keeper_.Texts(); }
    void ApplyFont(const QFont& font);

    // Shows the query's rows, without a selection; the cursor stands on the first. A pending edit is lost. Throws.
    void Open(const QString& source);
    // Reads the rows again and clears the selection; the cursor stays where it was. Throws.
    void Requery();
    void CloseRecords();
    // Whichever of the two applies; rows with a pending edit are left as they are. Throws.
    void Refresh(const QString& source);
    // What the Choice column offers.
    void SetChoices(QStringList choices);

    // Takes what is being typed and closes the editor. False when it stays open; a message has said why.
    bool CommitCell();
    // The same, then writes the row. False when it must stay; a message has said why.
    bool UpdateRow();
    // Takes what is being typed and stores the row if that needs no question; else the log keeps it.
    void StoreUnasked() noexcept;
    bool HasPendingEdit() const { return Editor() != nullptr || rows_.PendingRow(); }

    // In the order of selection.
    const QList<int>& SelectedRows() const { return selection_; }
    void SelectAll();
    void ClearSelection();

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
    // Of the open editor: keys that end the entry go on to the grid.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* Editor() const { return indexWidget(currentIndex()); }
    void CloseEditor();
    void Reset(const std::function<void()>& read);
    void PutCursor(int row, int column);
    int FirstEditableColumn() const;
    // Moves the cursor as the keys do; false when it had to stay in its row.
    bool GoTo(int row, int column);
    // To the next or previous cell that can be edited, into the neighbouring row at the end of one. False at the grid's
    // ends.
    bool GoToNextCell(int step);
    void GoDown();
    void GoToEnd(int key);

    // Whether the current cell can be changed now; an open editor is committed first.
    bool BeginsEdit();
    // Opens the current cell's editor. `typed` replaces the cell's text; null leaves it, to be gone on with at its end.
    void EditCell(const QString& typed);
    // A click into the current cell; `again` when it was the current one before.
    void ClickCell(QPoint place, bool again);
    void OpenChoices();
    void ToggleCell();
    // False when it was not taken, which was reported.
    bool SetValue(const QModelIndex& index, const Value& value);
    bool EndsEntry(const QKeyEvent& event) const;

    bool GridKey(const QKeyEvent& event);
    bool EscapeKey();
    bool CommandKey(const QKeyEvent& event);
    bool MovingKey(const QKeyEvent& event);
    bool CellKey(const QKeyEvent& event);
    bool TypedKey(const QKeyEvent& event);
    void DeleteSelected();
    void Copy();
    void Paste();

    void ShowSelection();
    void SelectRow(int row, Qt::KeyboardModifiers modifiers);
    // In that direction, both ends included.
    void SelectRange(int from, int to);
    void PressRow(int row, Qt::KeyboardModifiers modifiers);
    void PressCell(int row, Qt::KeyboardModifiers modifiers);

    void Focus_Changed();
    void Model_ReadFailed();

    const Program& program_;
    const QString module_;
    BoundRows rows_;
    RowRules& rules_;
    RowKeeper keeper_;
    BoundModel model_;
    // The selected rows, in the order in which they were selected.
    QList<int> selection_;
    // The row that was selected last without Shift, where a range begins.
    int anchor_ = 0;
    GridDelegate* delegate_;
    RecordSelectors* selectors_;
    // A question about the cell or the row is open: until it is answered nothing else leaves them.
    bool asking_ = false;
};

} // namespace velmora
