#pragma once

#include "base/Program.h"
#include "notes/CellText.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

class QKeyEvent;
class QTableView;

namespace velmora {

// The editor of one cell, laid over it: a line, a sheet for texts of several lines, a drop-down, or a date box.
class CellEditing : public QObject {
    Q_OBJECT

public:
    // All of it outlives the object; the view shows a BoundModel.
    CellEditing(const Program& program, QTableView& view, const CellText& texts);

    // What a Choice column offers from the next opening on.
    void SetChoices(QStringList choices) { choices_ = std::move(choices); }

    // `typed` takes the place of the cell's text; null leaves it, to be gone on with at its end.
    void Open(const QModelIndex& index, const QString& typed);
    // Shows the list or the calendar of the open editor, where it has one.
    void DropDown();
    bool IsOpen() const { return editor_ != nullptr; }
    QModelIndex Index() const { return index_; }
    // Nothing was entered since it was opened.
    bool IsUntouched() const;
    // What was entered. Throws Error that names an entry which the column does not take.
    Value Read() const;
    // The editor tells by itself, in place, why Read fails.
    bool TellsRefusal() const;
    void Close();
    // Back to the editor, all of its text selected.
    void TakeFocus();

Q_SIGNALS:
    // A key that ends the editing or belongs to the grid. The entry is still open.
    void GridKey(QKeyEvent* event);
    // An entry of the list was chosen: nothing more is to be typed.
    void Chosen();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* MakeEditor(const BoundColumn& column);
    QString EditorText() const;
    void SetText(const QString& text);
    void StandBehindText();
    void Place();
    bool IsGridKey(const QKeyEvent& event) const;
    Value ReadMoment() const;

    const Program& program_;
    QTableView& view_;
    const CellText& texts_;
    QStringList choices_;
    QPersistentModelIndex index_;
    BoundColumn column_;
    Value stored_;
    // The editor's text as the cell had it.
    QString initial_;
    QPointer<QWidget> editor_;
};

} // namespace velmora
