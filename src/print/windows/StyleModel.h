#pragma once

#include "print/PrintStyles.h"

#include <QAbstractTableModel>

namespace velmora::print {

// The rows of the print styles as a table: caption, the four style bits as check boxes, and a sample.
class StyleModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Caption, BoldColumn, ItalicColumn, UnderlinedColumn, GreyBoxColumn, SampleColumn, ColumnCount };

    explicit StyleModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    const StyleRows& Rows() const { return rows_; }
    void SetRows(StyleRows rows);
    // Adds an empty row at the end; returns its number.
    int Add();
    // Captions that more than one row has, letter case included.
    QStringList Duplicates() const;
    // The first row without a caption, or -1.
    int RowWithoutCaption() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

private:
    bool IsLaterDuplicate(size_t row) const;

    StyleRows rows_;
};

} // namespace velmora::print
