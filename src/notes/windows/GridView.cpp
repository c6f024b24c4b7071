#include "notes/windows/GridView.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/DateBox.h"
#include "base/windows/Look.h"
#include "notes/windows/GridDelegate.h"
#include "notes/windows/RecordSelectors.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace velmora {

using namespace Qt::StringLiterals;

GridView::GridView(const Program& program, BoundRows rows, RowRules& rules, QString module, QWidget* parent)
    : QTableView(parent), program_(program), module_(std::move(module)), rows_(std::move(rows)), rules_(rules),
      keeper_(program, rows_, rules, module_), model_(rows_, keeper_.Texts()),
      delegate_(new GridDelegate(program, keeper_.Texts(), selection_, this)),
      selectors_(new RecordSelectors(model_, selection_, this)) {
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setAlternatingRowColors(true);
    setVerticalHeader(selectors_);
    setModel(&model_);
    setItemDelegate(delegate_);
    connect(selectors_, &RecordSelectors::Pressed, this, &GridView::PressRow);
    connect(&model_, &BoundModel::ReadFailed, this, &GridView::Model_ReadFailed, Qt::QueuedConnection);
    for (const QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, &GridView::updateEditorGeometries);
    }
    // The one place that sees the focus leave for another control of the window, wherever in the grid it was: queued,
    // so that the click or key that took it is handled before.
    connect(qApp, &QApplication::focusChanged, this, &GridView::Focus_Changed, Qt::QueuedConnection);
}

GridView::~GridView() {
    setModel(nullptr);
}

void GridView::ApplyFont(const QFont& font) {
    setFont(font);
    horizontalHeader()->setFont(font);
    selectors_->setFont(font);
    selectors_->setMinimumSectionSize(1);
    selectors_->setDefaultSectionSize(QFontMetrics(font).height() + spacing::normal + spacing::small);
}

int GridView::FirstEditableColumn() const {
    int column = 0;
    while (column < model_.columnCount() && !model_.CanEdit(column)) {
        ++column;
    }
    return column < model_.columnCount() ? column : 0;
}

void GridView::PutCursor(int row, int column) {
    setCurrentIndex(model_.index(std::clamp(row, 0, std::max(0, model_.rowCount() - 1)), column));
}

void GridView::Reset(const std::function<void()>& read) {
    CloseEditor();
    selection_.clear();
    model_.Reset(read);
}

void GridView::Open(const QString& source) {
    Reset([&] { rows_.Open(source); });
    PutCursor(0, FirstEditableColumn());
}

void GridView::Requery() {
    const QModelIndex current = currentIndex();
    const int row = current.isValid() ? current.row() : 0;
    const int column = current.isValid() ? current.column() : FirstEditableColumn();
    Reset([this] { rows_.Reopen(); });
    PutCursor(row, column);
}

void GridView::Refresh(const QString& source) {
    if (!HasPendingEdit()) {
        rows_.IsOpen() ? Requery() : Open(source);
    }
}

void GridView::CloseRecords() {
    Reset([this] { rows_.Close(); });
}

void GridView::Model_ReadFailed() {
    Steps steps(program_.services().errors, module_, u"Read Rows"_s);
    steps.Step(u"Reading Rows"_s, [this] {
        if (!rows_.PendingRow()) {
            Requery();
        }
        for (int row = 0; row < rows_.Count(); ++row) {
            rows_.Stored(row, 0);
        }
    });
}

void GridView::SetChoices(QStringList choices) {
    delegate_->SetChoices(std::move(choices));
}

void GridView::CloseEditor() {
    if (QWidget* editor = Editor()) {
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

bool GridView::CommitCell() {
    QWidget* editor = Editor();
    if (editor == nullptr) {
        return true;
    }
    if (asking_) {
        return false;
    }
    const QScopedValueRollback asking(asking_, true);
    try {
        const QModelIndex cell = currentIndex();
        if (GridDelegate::IsUntouched(*editor) || SetValue(cell, delegate_->Read(*editor, cell))) {
            CloseEditor();
            return true;
        }
    } catch (const Error& refusal) {
        // A date box says by itself, in place, why it refuses an entry.
        if (qobject_cast<DateBox*>(editor) == nullptr) {
            program_.services().dialogs.ShowMessage(
                {refusal.Description(), program_.Title(), Buttons::Ok, Icon::Exclamation});
        }
    }
    scrollTo(currentIndex());
    editor->setFocus();
    GridDelegate::SelectText(*editor);
    return false;
}

bool GridView::SetValue(const QModelIndex& index, const Value& value) {
    const int row = index.row();
    Steps steps(program_.services().errors, module_, u"Edit Cell"_s);
    const bool taken = steps.Step(u"Taking Value"_s, [&] {
        rows_.Set(row, index.column(), value);
        rules_.FillIn(rows_, row, index.column());
    });
    model_.RowChanged(row);
    return taken;
}

bool GridView::UpdateRow() {
    if (asking_ || !CommitCell()) {
        return false;
    }
    const auto row = rows_.PendingRow();
    if (!row) {
        return true;
    }
    const QScopedValueRollback asking(asking_, true);
    const bool stored = keeper_.Store();
    model_.RowChanged(*row);
    if (!stored) {
        if (const auto choices = keeper_.NewChoices()) {
            SetChoices(*choices);
        }
        PutCursor(*rows_.PendingRow(), keeper_.MissingColumn().value_or(currentIndex().column()));
        setFocus();
    }
    return stored;
}

void GridView::StoreUnasked() noexcept {
    try {
        QWidget* editor = Editor();
        const QModelIndex cell = currentIndex();
        if (editor != nullptr && !GridDelegate::IsUntouched(*editor) &&
            rows_.PendingRow().value_or(cell.row()) == cell.row()) {
            rows_.Set(cell.row(), cell.column(), delegate_->Read(*editor, cell));
        }
    } catch (const std::exception& failure) {
        program_.services().log.Write(module_ + u": "_s + QString::fromUtf8(failure.what()));
    }
    keeper_.StoreUnasked();
}

void GridView::Focus_Changed() {
    const QWidget* focus = QApplication::focusWidget();
    const bool elsewhere = focus != nullptr && focus != this && !isAncestorOf(focus);
    if (isVisible() && elsewhere && focus->window() == window()) {
        UpdateRow();
    }
}

bool GridView::BeginsEdit() {
    const QModelIndex cell = currentIndex();
    // The view may have the focus while an editor is still open.
    if (!cell.isValid() || !model_.CanEdit(cell.column()) || asking_ || !CommitCell()) {
        return false;
    }
    // Reads the row: only then is it known whether it is still there.
    model_.ValueAt(cell);
    if (model_.IsGone(cell.row())) {
        program_.services().dialogs.ShowMessage(
            {Translate(u"Another desk deleted this row. It is gone from the list when the list is opened again."_s),
             program_.Title(), Buttons::Ok, Icon::Exclamation});
        return false;
    }
    return true;
}

void GridView::EditCell(const QString& typed) {
    if (!BeginsEdit() || model_.Column(currentIndex().column()).kind == CellKind::YesNo) {
        return;
    }
    scrollTo(currentIndex());
    edit(currentIndex());
    QWidget& editor = *Editor();
    editor.installEventFilter(this);
    if (const auto* box = qobject_cast<ChoiceBox*>(&editor)) {
        connect(box, &ChoiceBox::Chosen, this, &GridView::CommitCell);
    }
    if (typed.isNull()) {
        GridDelegate::GoBehindText(editor);
    } else {
        GridDelegate::SetText(editor, typed);
    }
}

void GridView::OpenChoices() {
    EditCell({});
    if (QWidget* editor = Editor()) {
        GridDelegate::OpenList(*editor);
    }
}

void GridView::ToggleCell() {
    if (BeginsEdit()) {
        SetValue(currentIndex(), Value(!model_.ValueAt(currentIndex()).ToBool()));
    }
}

bool GridView::EndsEntry(const QKeyEvent& event) const {
    const CellKind kind = model_.Column(currentIndex().column()).kind;
    const bool plain = event.modifiers() == Qt::NoModifier || event.modifiers() == Qt::KeypadModifier;
    switch (event.key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return plain;
    case Qt::Key_Up:
    case Qt::Key_Down:
        return plain && (kind == CellKind::Text || kind == CellKind::Money);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return kind != CellKind::Lines;
    default:
        return false;
    }
}

bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != Editor() || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)) {
        return QTableView::eventFilter(watched, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    if (!EndsEntry(*key)) {
        // With Shift or Ctrl it ends a line instead of the entry.
        auto* sheet = qobject_cast<QPlainTextEdit*>(watched);
        const bool lineEnd = sheet != nullptr && key->key() == Qt::Key_Return;
        if (lineEnd && event->type() == QEvent::KeyPress) {
            sheet->insertPlainText(u"\n"_s);
        }
        return lineEnd;
    }
    if (event->type() == QEvent::KeyPress && (key->key() == Qt::Key_Escape || CommitCell())) {
        QKeyEvent again(QEvent::KeyPress, key->key(), key->modifiers(), key->text());
        QApplication::sendEvent(this, &again);
    }
    // However the grid took it, the key ends here.
    event->accept();
    return true;
}

} // namespace velmora
