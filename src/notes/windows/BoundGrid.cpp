#include "notes/windows/BoundGrid.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Look.h"
#include "notes/windows/BoundModel.h"
#include "notes/windows/GridDelegate.h"
#include "notes/windows/GridStyle.h"
#include "notes/windows/RecordSelectors.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerInch = 1440;

// A cell among others in a text for the clipboard, as spreadsheets write and read it.
QString ClipboardCell(QString text) {
    if (text.contains(u'\t') || text.contains(u'\n') || text.contains(u'"')) {
        text.replace(u"\""_s, u"\"\""_s);
        return u'"' + text + u'"';
    }
    return text;
}

FontChoice ChoiceOf(const QFont& font) {
    return {font.family(), font.pointSizeF(), font.bold(), font.italic()};
}

QFont FontOf(const FontChoice& choice) {
    QFont font(choice.family);
    font.setPointSizeF(choice.points);
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    return font;
}

} // namespace

BoundGrid::BoundGrid(const Program& program, engine::Database& database, RowRules& rules, Setup setup, QWidget* parent)
    : QFrame(parent), program_(program), setup_(std::move(setup)), rows_(database, setup_.columns, setup_.fixed),
      rules_(rules), keeper_(program, rows_, rules, setup_.module),
      settings_(program.services().userSettings, setup_.settings), model_(new BoundModel(rows_, keeper_.Texts(), this)),
      lblCaption_(new QLabel(setup_.caption)), view_(new GridView(*this, *model_, this)),
      selectors_(new RecordSelectors(*model_, selection_, view_)),
      editing_(new CellEditing(program, *view_, keeper_.Texts())) {
    setObjectName(setup_.objectName);
    setFrameShape(QFrame::StyledPanel);
    LayOut();
    Connect();
    const auto font = settings_.Font();
    ApplyFont(font ? FontOf(*font) : view_->font());
}

BoundGrid::~BoundGrid() {
    // They look at the rows until they are gone.
    delete view_;
    delete model_;
}

void BoundGrid::LayOut() {
    lblCaption_->setMargin(spacing::small);
    lblCaption_->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblCaption_->setToolTip(Translate(u"Click to select all rows"_s));
    lblCaption_->setAutoFillBackground(true);
    lblCaption_->setBackgroundRole(QPalette::Button);
    QFont strong = lblCaption_->font();
    strong.setBold(true);
    lblCaption_->setFont(strong);

    view_->setVerticalHeader(selectors_);
    view_->setModel(model_);
    view_->setItemDelegate(new GridDelegate(selection_, view_));
    view_->setObjectName(setup_.objectName + u"View"_s);
    view_->setAccessibleName(setup_.caption);
    view_->setAlternatingRowColors(true);
    auto* style = new GridStyle(view_);
    for (QWidget* each : {static_cast<QWidget*>(view_), static_cast<QWidget*>(view_->horizontalHeader())}) {
        each->setStyle(style);
    }
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setMinimumSectionSize(2 * spacing::large);
    view_->horizontalHeader()->setStretchLastSection(setup_.columns.size() == 1);
    setFocusProxy(view_);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(lblCaption_);
    column->addWidget(view_, 1);
}

void BoundGrid::Connect() {
    connect(selectors_, &RecordSelectors::Pressed, this, &BoundGrid::Selectors_Pressed);
    connect(editing_, &CellEditing::GridKey, this, &BoundGrid::Editing_GridKey);
    connect(editing_, &CellEditing::Chosen, this, &BoundGrid::CommitCell);
    connect(model_, &BoundModel::ReadFailed, this, &BoundGrid::Model_ReadFailed, Qt::QueuedConnection);
    connect(qApp, &QApplication::focusChanged, this, &BoundGrid::Focus_Changed);
    connect(view_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { columnsChanged_ = columnsChanged_ || columnsSized_; });
}

QSize BoundGrid::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 12};
}

void BoundGrid::ApplyFont(const QFont& font) {
    view_->setFont(font);
    view_->horizontalHeader()->setFont(font);
    selectors_->setFont(font);
    selectors_->setMinimumSectionSize(1);
    selectors_->setDefaultSectionSize(QFontMetrics(font).height() + spacing::normal + spacing::small);
}

void BoundGrid::SizeColumns() {
    const int count = model_->columnCount();
    QHeaderView& header = *view_->horizontalHeader();
    if (const auto widths = settings_.Widths(count)) {
        for (int i = 0; i < count; ++i) {
            header.resizeSection(i, (*widths)[i]);
        }
        return;
    }
    int total = 0;
    int widest = 0;
    for (int i = 0; i < count; ++i) {
        const int letters = view_->fontMetrics().averageCharWidth() * model_->Column(i).letters + spacing::large;
        header.resizeSection(i, std::max(letters, header.sectionSizeHint(i)));
        total += header.sectionSize(i);
        widest = model_->Column(i).letters > model_->Column(widest).letters ? i : widest;
    }
    // The column of the longest texts takes what the window has to spare, and gives up to half of its own width.
    if (count > 1) {
        // The scroll bar of more rows than the window shows must not cover the last column.
        const int room =
            view_->width() - selectors_->sizeHint().width() - view_->verticalScrollBar()->sizeHint().width();
        const int spare = room - total;
        header.resizeSection(widest, header.sectionSize(widest) + std::max(spare, -header.sectionSize(widest) / 2));
    }
}

void BoundGrid::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    if (!columnsSized_) {
        layout()->activate();
        SizeColumns();
        columnsSized_ = true;
    }
}

void BoundGrid::hideEvent(QHideEvent* event) {
    SaveSettings();
    QFrame::hideEvent(event);
}

void BoundGrid::SaveSettings() {
    if (!std::exchange(columnsChanged_, false)) {
        return;
    }
    QList<int> widths;
    for (int i = 0; i < model_->columnCount(); ++i) {
        widths.append(view_->horizontalHeader()->sectionSize(i));
    }
    Steps steps(program_.services().errors, setup_.module, u"Save Columns"_s);
    steps.Step(u"Saving Column Widths"_s, [&] { settings_.SaveWidths(widths); });
}

void BoundGrid::ChooseFont() {
    if (!CommitCell()) {
        return;
    }
    const auto choice = program_.services().dialogs.AskFont(ChoiceOf(view_->font()));
    if (!choice) {
        return;
    }
    ApplyFont(FontOf(*choice));
    Steps steps(program_.services().errors, setup_.module, u"Choose Font"_s);
    steps.Step(u"Saving Font"_s, [&] { settings_.SaveFont(*choice); });
}

void BoundGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    ChooseFont();
}

void BoundGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && lblCaption_->geometry().contains(event->pos())) {
        SelectAll();
    }
}

int BoundGrid::FirstEditableColumn() const {
    for (int i = 0; i < model_->columnCount(); ++i) {
        if (model_->CanEdit(i)) {
            return i;
        }
    }
    return 0;
}

void BoundGrid::PutCursor(int row, int column) {
    view_->setCurrentIndex(model_->index(std::clamp(row, 0, std::max(0, model_->rowCount() - 1)), column));
}

void BoundGrid::Open(const QString& source) {
    editing_->Close();
    selection_.Clear();
    model_->Reset([&] { rows_.Open(source); });
    PutCursor(0, FirstEditableColumn());
}

void BoundGrid::Requery() {
    editing_->Close();
    selection_.Clear();
    const QModelIndex current = view_->currentIndex();
    const int row = current.isValid() ? current.row() : 0;
    const int column = current.isValid() ? current.column() : FirstEditableColumn();
    model_->Reset([&] { rows_.Reopen(); });
    PutCursor(row, column);
}

void BoundGrid::CloseRecords() {
    editing_->Close();
    selection_.Clear();
    model_->Reset([&] { rows_.Close(); });
}

void BoundGrid::Model_ReadFailed() {
    Steps steps(program_.services().errors, setup_.module, u"Read Rows"_s);
    steps.Step(u"Reading Rows"_s, [this] {
        if (!rows_.PendingRow()) {
            Requery();
        }
        for (int row = 0; row < rows_.Count(); ++row) {
            rows_.Stored(row, 0);
        }
    });
}

void BoundGrid::TellRefusal(const Error& refusal) {
    if (!editing_->TellsRefusal()) {
        program_.services().dialogs.ShowMessage(
            {refusal.Description(), program_.Title(), Buttons::Ok, Icon::Exclamation});
    }
    editing_->TakeFocus();
}

bool BoundGrid::CommitCell() {
    if (!editing_->IsOpen()) {
        return true;
    }
    if (busy_) {
        return false;
    }
    const QScopedValueRollback busy(busy_, true);
    if (editing_->IsUntouched()) {
        editing_->Close();
        return true;
    }
    try {
        if (!SetValue(editing_->Index(), editing_->Read())) {
            editing_->TakeFocus();
            return false;
        }
        editing_->Close();
        return true;
    } catch (const Error& refusal) {
        TellRefusal(refusal);
        return false;
    }
}

bool BoundGrid::SetValue(const QModelIndex& index, const Value& value) {
    const int row = index.row();
    Steps steps(program_.services().errors, setup_.module, u"Edit Cell"_s);
    const bool taken = steps.Step(u"Taking Value"_s, [&] {
        rows_.Set(row, index.column(), value);
        rules_.Follow(rows_, row, index.column());
    });
    model_->RowChanged(row);
    return taken;
}

void BoundGrid::StoreUnasked() noexcept {
    try {
        const QModelIndex cell = editing_->Index();
        if (editing_->IsOpen() && !editing_->IsUntouched() && rows_.PendingRow().value_or(cell.row()) == cell.row()) {
            rows_.Set(cell.row(), cell.column(), editing_->Read());
        }
    } catch (const std::exception& failure) {
        program_.services().log.Write(setup_.module + u": "_s + QString::fromUtf8(failure.what()));
    }
    keeper_.StoreUnasked();
}

bool BoundGrid::UpdateRow() {
    if (busy_ || !CommitCell()) {
        return false;
    }
    const auto row = rows_.PendingRow();
    if (!row) {
        return true;
    }
    const QScopedValueRollback busy(busy_, true);
    const bool stored = keeper_.Store();
    model_->RowChanged(*row);
    if (!stored) {
        if (const auto choices = keeper_.NewChoices()) {
            editing_->SetChoices(*choices);
        }
        PutCursor(*rows_.PendingRow(), keeper_.WantingColumn().value_or(view_->currentIndex().column()));
        view_->setFocus();
    }
    return stored;
}

bool BoundGrid::CanEditCell(const QModelIndex& index) {
    // The view may have the focus while an editor is still open.
    if (!index.isValid() || !model_->CanEdit(index.column()) || busy_ || !CommitCell()) {
        return false;
    }
    // Reads the row: only then is it known whether it is still there.
    model_->ValueAt(index);
    if (model_->IsGone(index.row())) {
        program_.services().dialogs.ShowMessage(
            {Translate(u"Another desk deleted this row. It is gone from the list when the list is opened again."_s),
             program_.Title(), Buttons::Ok, Icon::Exclamation});
        return false;
    }
    return true;
}

void BoundGrid::EditCell(const QModelIndex& index, const QString& typed) {
    if (CanEditCell(index) && model_->Column(index.column()).kind != CellKind::YesNo) {
        view_->scrollTo(index);
        editing_->Open(index, typed);
    }
}

void BoundGrid::ClickCell(const QModelIndex& index) {
    EditCell(index, {});
    // A short entry is typed over. A text of several lines would be lost to one slip of a finger.
    if (model_->Column(index.column()).kind != CellKind::Lines) {
        editing_->TakeFocus();
    }
}

void BoundGrid::OpenChoices(const QModelIndex& index) {
    EditCell(index, {});
    editing_->DropDown();
}

void BoundGrid::ToggleCell(const QModelIndex& index) {
    if (CanEditCell(index)) {
        SetValue(index, Value(!model_->ValueAt(index).ToBool()));
    }
}

void BoundGrid::UndoRow() {
    const int row = rows_.PendingRow().value();
    rows_.Undo();
    model_->RowChanged(row);
}

void BoundGrid::DeleteSelected() {
    if (selection_.Rows().empty() || !model_->CanAdd()) {
        return;
    }
    const auto pending = rows_.PendingRow();
    if (pending && !selection_.Contains(*pending) && !UpdateRow()) {
        return;
    }
    const QScopedValueRollback busy(busy_, true);
    if (keeper_.Delete(selection_.Rows())) {
        Steps steps(program_.services().errors, setup_.module, u"Keyboard Trap"_s);
        steps.Step(u"Delete Rows"_s, [this] { Requery(); });
    }
}

void BoundGrid::GoToEnd(int key) {
    if (rows_.Count() == 0 || !UpdateRow()) {
        return;
    }
    PutCursor(key == Qt::Key_PageUp ? 0 : rows_.Count() - 1, view_->currentIndex().column());
}

void BoundGrid::Copy() {
    QStringList lines;
    for (const int row : selection_.Rows()) {
        QStringList cells;
        for (int column = 0; column < model_->columnCount(); ++column) {
            cells.append(ClipboardCell(model_->data(model_->index(row, column)).toString()));
        }
        lines.append(cells.join(u'\t'));
    }
    if (lines.isEmpty()) {
        lines.append(model_->data(view_->currentIndex()).toString());
    }
    QApplication::clipboard()->setText(lines.join(u'\n'));
}

void BoundGrid::Paste() {
    const QString text = QApplication::clipboard()->text();
    if (!text.isEmpty()) {
        EditCell(view_->currentIndex(), text);
    }
}

bool BoundGrid::CommandKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy)) {
        Copy();
    } else if (event.matches(QKeySequence::Paste)) {
        Paste();
    } else if (event.matches(QKeySequence::SelectAll)) {
        SelectAll();
    } else {
        return false;
    }
    return true;
}

bool BoundGrid::GridKey(const QKeyEvent& event) {
    const int current = view_->currentIndex().row();
    const bool modified = event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    switch (event.key()) {
    case Qt::Key_Delete:
        DeleteSelected();
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (modified) {
            GoToEnd(event.key());
        }
        return modified;
    case Qt::Key_Escape:
        if (editing_->IsOpen()) {
            editing_->Close();
            return true;
        }
        if (rows_.PendingRow()) {
            UndoRow();
            return true;
        }
        return false;
    case Qt::Key_Space:
        // In a list that is only read the bar alone does it too.
        if (event.modifiers() == Qt::ShiftModifier || !model_->CanAdd()) {
            Selectors_Pressed(current, Qt::ControlModifier);
            return true;
        }
        return false;
    default:
        return CommandKey(event);
    }
}

void BoundGrid::Editing_GridKey(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        editing_->Close();
    } else if (CommitCell()) {
        QKeyEvent again(QEvent::KeyPress, event->key(), event->modifiers(), event->text());
        QApplication::sendEvent(view_, &again);
    }
    // However the view took it, the key ends here.
    event->accept();
}

void BoundGrid::ShowSelection() {
    view_->viewport()->update();
    selectors_->viewport()->update();
}

void BoundGrid::SelectAll() {
    selection_.SelectAll(rows_.Count());
    ShowSelection();
}

void BoundGrid::ClearSelection() {
    selection_.Clear();
    ShowSelection();
}

void BoundGrid::Deselect(int row) {
    selection_.Remove(row);
    ShowSelection();
}

void BoundGrid::SelectRange(int from, int to) {
    for (int row = from; row != to; row += from < to ? 1 : -1) {
        selection_.Add(row);
    }
    selection_.Add(to);
}

void BoundGrid::SelectRow(int row, Qt::KeyboardModifiers modifiers) {
    if (!modifiers.testFlag(Qt::ControlModifier)) {
        selection_.Clear();
    }
    if (!modifiers.testFlag(Qt::ShiftModifier)) {
        anchor_ = row;
    }
    // The empty row cannot be selected.
    if (row < rows_.Count() && modifiers.testFlag(Qt::ShiftModifier)) {
        SelectRange(std::min(anchor_, rows_.Count() - 1), row);
    } else if (row < rows_.Count()) {
        selection_.Toggle(row);
    }
    ShowSelection();
}

void BoundGrid::Selectors_Pressed(int row, Qt::KeyboardModifiers modifiers) {
    view_->setFocus();
    const int column = view_->currentIndex().isValid() ? view_->currentIndex().column() : 0;
    if (view_->GoTo(row, column)) {
        SelectRow(row, modifiers);
    }
}

void BoundGrid::PressCell(int row, Qt::KeyboardModifiers modifiers) {
    // A list that is only read is chosen from anywhere in its rows.
    if (modifiers != Qt::NoModifier || !model_->CanAdd()) {
        Selectors_Pressed(row, modifiers);
    } else {
        anchor_ = row;
        ClearSelection();
    }
}

void BoundGrid::Focus_Changed(QWidget* before, QWidget* now) {
    const bool leaves =
        before != nullptr && isAncestorOf(before) && now != nullptr && !isAncestorOf(now) && now->window() == window();
    if (!leaves) {
        return;
    }
    // Behind the click or key that took the focus.
    QTimer::singleShot(0, this, [this] {
        const QWidget* focus = QApplication::focusWidget();
        if (isVisible() && focus != nullptr && !isAncestorOf(focus) && focus->window() == window()) {
            UpdateRow();
        }
    });
}

print::GridSelection BoundGrid::ToPrint() {
    print::GridSelection grid;
    grid.caption = lblCaption_->text();
    grid.font = ChoiceOf(view_->font());
    for (int i = 0; i < model_->columnCount(); ++i) {
        const double width = view_->horizontalHeader()->sectionSize(i) * twipsPerInch / view_->logicalDpiX();
        grid.columns.push_back({model_->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString(), width});
    }
    grid.rowCount = static_cast<int>(selection_.Rows().size());
    grid.text = [this, rows = selection_.Rows()](int row, int column) {
        const Value& value = rows_.At(rows[static_cast<size_t>(row)], column);
        return keeper_.Texts().Shown(value, model_->Column(column).kind);
    };
    return grid;
}

} // namespace velmora
