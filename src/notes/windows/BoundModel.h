#pragma once

#include "notes/BoundRows.h"
#include "notes/CellText.h"

#include <QAbstractTableModel>

#include <functional>

namespace velmora {

// The rows as the toolkit's views show them, with the empty row behind them where rows can be added. What cannot be
// read is shown empty, and ReadFailed reports it once.
class BoundModel : public QAbstractTableModel {
    Q_OBJECT

public:
    // Rows and texts outlive the model.
    BoundModel(BoundRows& rows, const CellText& texts);

    const BoundRows& Rows() const { return rows_; }
    const BoundColumn& Column(int column) const { return rows_.Columns()[static_cast<size_t>(column)]; }
    bool IsNewRow(int row) const { return row >= rows_.Count(); }
    bool IsGone(int row) const { return rows_.IsGone(row); }
    bool CanEdit(int column) const { return Column(column).editing == Editing::Allowed; }
    bool CanAdd() const { return canAdd_; }
    // Empty where it cannot be read.
    Value ValueAt(const QModelIndex& index) const;

    // Brackets whatever changes the rows as a whole.
    void Reset(const std::function<void()>& change);
    // To be called after a change of one row; reports rows added since to the views, too.
    void RowChanged(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void ReadFailed() const;

private:
    QString Text(const QModelIndex& index) const;

    BoundRows& rows_;
    const CellText& texts_;
    bool canAdd_;
    // The stored rows that the views know of.
    int shown_ = 0;
    mutable bool reported_ = false;
};

} // namespace velmora
