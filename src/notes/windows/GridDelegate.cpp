#include "notes/windows/GridDelegate.h"

#include "base/windows/Look.h"
#include "notes/windows/BoundModel.h"

#include <QApplication>
#include <QPainter>
#include <QTableView>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

const BoundModel& ModelOf(const QModelIndex& index) {
    return static_cast<const BoundModel&>(*index.model());
}

bool IsCurrent(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const auto* view = qobject_cast<const QTableView*>(option.widget);
    return view != nullptr && view->currentIndex() == index;
}

} // namespace

QRect GridDelegate::BoxRect(const QRect& cell, const QWidget& view) {
    const int size = view.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &view);
    return {cell.left() + spacing::normal, cell.center().y() - size / 2, size, size};
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const BoundModel& model = ModelOf(index);
    option->state.setFlag(QStyle::State_Selected, selection_.Contains(index.row()));
    option->state.setFlag(QStyle::State_Active, true);
    option->state.setFlag(QStyle::State_HasFocus, false);
    option->textElideMode = Qt::ElideRight;
    option->text.remove(u'\r').replace(QChar::LineSeparator, u" / "_s);
    if (model.IsGone(index.row())) {
        option->font.setStrikeOut(true);
    }
    // In a list that is only read nothing is set apart.
    if (model.IsGone(index.row()) || (model.CanAdd() && !model.CanEdit(index.column()))) {
        option->palette.setColor(QPalette::Text, QuietColour(option->palette));
    }
}

void GridDelegate::PaintBox(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const QString word = shown.text;
    shown.text.clear();
    const QStyle& style = *option.widget->style();
    style.drawControl(QStyle::CE_ItemViewItem, &shown, &painter, option.widget);

    const QRect box = BoxRect(option.rect, *option.widget);
    QStyleOption tick;
    tick.rect = box;
    tick.palette = shown.palette;
    tick.state =
        QStyle::State_Enabled | (ModelOf(index).ValueAt(index).ToBool() ? QStyle::State_On : QStyle::State_Off);
    // As everywhere in the program: the grid's own style knows only rows and lines.
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &tick, &painter, option.widget);

    const bool selected = shown.state.testFlag(QStyle::State_Selected);
    painter.setPen(shown.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter.setFont(shown.font);
    const QRect room = option.rect.adjusted(box.right() - option.rect.left() + spacing::normal, 0, -2, 0);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     shown.fontMetrics.elidedText(word, Qt::ElideRight, room.width()));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    const BoundModel& model = ModelOf(index);
    // The empty row shows no boxes until something is in it.
    const bool box = model.Column(index.column()).kind == CellKind::YesNo &&
                     (!model.IsNewRow(index.row()) || model.Rows().PendingRow() == index.row());
    if (box) {
        PaintBox(*painter, option, index);
    } else {
        QStyledItemDelegate::paint(painter, option, index);
    }
    if (IsCurrent(option, index)) {
        const bool selected = selection_.Contains(index.row());
        painter->setPen(QPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight), 2));
        painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    }
    painter->restore();
}

} // namespace velmora
