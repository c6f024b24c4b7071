#pragma once

#include "notes/RowKeeper.h"
#include "notes/windows/CellEditing.h"
#include "notes/windows/GridSettings.h"
#include "notes/windows/GridView.h"
#include "notes/windows/RowSelection.h"
#include "print/PrintGrid.h"

#include <QFrame>

class QLabel;

namespace velmora {

class BoundModel;
class RecordSelectors;

// A grid bound to a record set: a caption band, record selectors, the rows, and an empty one behind them where rows can
// be added. Cells are edited in place; a row is written when the cursor leaves it; Escape takes back the cell first,
// then the row. Rows are selected at their selectors, in an order of their own, apart from the cursor.
class BoundGrid : public QFrame, private GridHandler {
    Q_OBJECT

public:
    struct Setup {
        // Of the control itself.
        QString objectName;
        QString caption;
        // The window's name in error reports.
        QString module;
        // The section under which the user's columns and font are kept.
        QString settings;
        std::vector<BoundColumn> columns;
        std::vector<BoundRows::FixedValue> fixed;
    };
    // Program, database and rules outlive the grid.
    BoundGrid(const Program& program, engine::Database& database, RowRules& rules, Setup setup, QWidget* parent);
    ~BoundGrid() override;

    // Shows the query's rows, without a selection; the cursor stands on the first. A pending edit is lost. Throws.
    void Open(const QString& source);
    // Reads the rows again and clears the selection; the cursor stays where it was. Throws.
    void Requery();
    void CloseRecords();
    // What the grid's Choice column offers.
    void SetChoices(QStringList choices) { editing_->SetChoices(std::move(choices)); }

    // Takes what is being typed and stores the row if that needs no question; else the log keeps it.
    void StoreUnasked() noexcept;
    // Takes what is being typed and writes the row. False when it must stay, which the user was told.
    bool UpdateRow();
    bool HasPendingEdit() const { return editing_->IsOpen() || rows_.PendingRow(); }

    BoundRows& Rows() { return rows_; }
    GridView& View() { return *view_; }
    // The selected rows in the order of selection.
    const std::vector<int>& SelectedRows() const { return selection_.Rows(); }
    void SelectAll();
    void ClearSelection();
    void Deselect(int row);

    // The selected rows for printing, with the grid's font and columns as they are on the screen.
    print::GridSelection ToPrint();

    QSize sizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void LayOut();
    void Connect();
    void ApplyFont(const QFont& font);
    void SizeColumns();
    void SaveSettings();
    void ChooseFont();

    bool CommitCell() override;
    bool LeaveRow() override { return UpdateRow(); }
    void EditCell(const QModelIndex& index, const QString& typed) override;
    void ClickCell(const QModelIndex& index) override;
    void OpenChoices(const QModelIndex& index) override;
    void ToggleCell(const QModelIndex& index) override;
    bool GridKey(const QKeyEvent& event) override;
    void PressCell(int row, Qt::KeyboardModifiers modifiers) override;

    bool CanEditCell(const QModelIndex& index);
    // False when it was not taken, which was reported.
    bool SetValue(const QModelIndex& index, const Value& value);
    void TellRefusal(const Error& refusal);
    void PutCursor(int row, int column);
    int FirstEditableColumn() const;
    void UndoRow();
    void DeleteSelected();
    void GoToEnd(int key);
    void Copy();
    void Paste();
    bool CommandKey(const QKeyEvent& event);
    void ShowSelection();
    void SelectRange(int from, int to);
    void SelectRow(int row, Qt::KeyboardModifiers modifiers);

    void Selectors_Pressed(int row, Qt::KeyboardModifiers modifiers);
    void Editing_GridKey(QKeyEvent* event);
    void Focus_Changed(QWidget* before, QWidget* now);
    void Model_ReadFailed();

    const Program& program_;
    const Setup setup_;
    BoundRows rows_;
    RowRules& rules_;
    RowKeeper keeper_;
    GridSettings settings_;
    RowSelection selection_;
    // The row that was selected last without Shift, where a range begins.
    int anchor_ = 0;
    BoundModel* model_;
    QLabel* lblCaption_;
    GridView* view_;
    RecordSelectors* selectors_;
    CellEditing* editing_;
    // A question or message of UpdateRow or CommitCell is open.
    bool busy_ = false;
    bool columnsSized_ = false;
    bool columnsChanged_ = false;
};

} // namespace velmora
