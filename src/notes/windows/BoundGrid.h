#pragma once

#include "base/services/Dialogs.h"
#include "notes/windows/GridView.h"
#include "print/PrintGrid.h"

#include <QFrame>
#include <QList>

#include <optional>

class QLabel;

namespace velmora {

// A grid bound to a record set: a caption band, and below it record selectors, the rows, and an empty one behind them
// where rows can be added. Its font and the widths of its columns are kept for the user.
class BoundGrid : public QFrame {
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
    };
    // Program and rules outlive the grid.
    BoundGrid(const Program& program, BoundRows rows, RowRules& rules, Setup setup, QWidget* parent);

    // The cells, which know what is edited and selected.
    GridView& View() { return *view_; }

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
    void SizeColumns();
    void SizeColumnsByText();
    void SaveSettings();
    // What was kept for the user under a key; empty for nothing.
    QString Kept(const QString& key) const;
    // A failure is reported under the names of the procedure and the task.
    void Keep(const QString& key, const QString& value, const QString& procedure, const QString& task);
    // None where the user has not sized the columns, or what is kept is not a sound width for each of them.
    std::optional<QList<int>> KeptWidths() const;
    std::optional<FontChoice> KeptFont() const;

    const Program& program_;
    const Setup setup_;
    QLabel* lblCaption_;
    GridView* view_;
    bool columnsSized_ = false;
    bool columnsChanged_ = false;
};

} // namespace velmora
