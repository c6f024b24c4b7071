#pragma once

#include "notes/windows/RowSelection.h"

#include <QStyledItemDelegate>

namespace velmora {

// Draws the cells of a bound grid: selected rows, the current cell's frame, tick boxes with their words, texts of
// several lines in one. The selection outlives it.
class GridDelegate : public QStyledItemDelegate {
public:
    GridDelegate(const RowSelection& selection, QObject* parent) : QStyledItemDelegate(parent), selection_(selection) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // Where the tick box stands in a cell.
    static QRect BoxRect(const QRect& cell, const QWidget& view);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    void PaintBox(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    const RowSelection& selection_;
};

} // namespace velmora
