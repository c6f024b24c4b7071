#pragma once

#include "base/Program.h"
#include "notes/CellText.h"

#include <QComboBox>
#include <QStyledItemDelegate>

namespace velmora {

// An editable list in a cell, as wide as the cell however long its entries are.
class ChoiceBox : public QComboBox {
    Q_OBJECT

public:
    ChoiceBox(const QStringList& choices, QWidget* parent);

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    // An entry was chosen from the open list: nothing more is to be typed. The arrow keys choose without it.
    void Chosen();

private:
    bool chosen_ = false;
};

// Draws the cells of a bound grid (selected rows, the current cell's frame, tick boxes with their words, texts of
// several lines in one) and makes their editors. When an editor closes is the view's business.
class GridDelegate : public QStyledItemDelegate {
public:
    // All of it outlives the delegate.
    GridDelegate(const Program& program, const CellText& texts, const QList<int>& selection, QObject* parent)
        : QStyledItemDelegate(parent), program_(program), texts_(texts), selection_(selection) {}

    // What a Choice column offers from the next opening on.
    void SetChoices(QStringList choices) { choices_ = std::move(choices); }
    // Nothing was entered in the editor since it was opened.
    static bool IsUntouched(QWidget& editor);
    // As if it had been typed: lines become words behind each other where the editor has only one.
    static void SetText(QWidget& editor, const QString& text);
    static void SelectText(QWidget& editor);
    static void GoBehindText(QWidget& editor);
    // Shows the list or the calendar of an editor that has one.
    static void OpenList(QWidget& editor);
    // What was entered in the editor of that cell. Throws Error that names an entry which the column does not take.
    Value Read(QWidget& editor, const QModelIndex& index) const;
    // Where the tick box stands in a cell.
    static QRect BoxRect(const QRect& cell, const QWidget& view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    // The usual filter would end an entry whenever the focus goes elsewhere.
    bool eventFilter(QObject*, QEvent*) override { return false; }

private:
    void PaintBox(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const Program& program_;
    const CellText& texts_;
    const QList<int>& selection_;
    QStringList choices_;
};

} // namespace velmora
