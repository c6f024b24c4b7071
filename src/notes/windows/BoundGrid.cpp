#include "notes/windows/BoundGrid.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Look.h"
#include "base/windows/WindowServices.h"
#include "notes/windows/GridStyle.h"

#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerInch = 1440;

} // namespace

BoundGrid::BoundGrid(const Program& program, BoundRows rows, RowRules& rules, Setup setup, QWidget* parent)
    : QFrame(parent), program_(program), setup_(std::move(setup)),
      settings_(program.services().userSettings, setup_.settings), lblCaption_(new QLabel(setup_.caption)),
      view_(new GridView(program, std::move(rows), rules, setup_.module, this)) {
    setObjectName(setup_.objectName);
    setFrameShape(QFrame::StyledPanel);
    LayOut();
    connect(view_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { columnsChanged_ = columnsChanged_ || columnsSized_; });
    const auto font = settings_.Font();
    view_->ApplyFont(font ? ToFont(*font) : view_->font());
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

    view_->setObjectName(setup_.objectName + u"View"_s);
    view_->setAccessibleName(setup_.caption);
    auto* style = new GridStyle(view_);
    for (QWidget* each : {static_cast<QWidget*>(view_), static_cast<QWidget*>(view_->horizontalHeader())}) {
        each->setStyle(style);
    }
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setMinimumSectionSize(2 * spacing::large);
    view_->horizontalHeader()->setStretchLastSection(view_->Model().columnCount() == 1);
    setFocusProxy(view_);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 1);
    column->setSpacing(0);
    column->addWidget(lblCaption_);
    column->addWidget(view_, 1);
}

QSize BoundGrid::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 12};
}

void BoundGrid::SizeColumns() {
    const int count = view_->Model().columnCount();
    const auto widths = settings_.Widths(count);
    if (!widths) {
        SizeColumnsByText();
        return;
    }
    for (int i = 0; i < count; ++i) {
        view_->setColumnWidth(i, (*widths)[i]);
    }
}

void BoundGrid::SizeColumnsByText() {
    const BoundModel& model = view_->Model();
    QHeaderView& header = *view_->horizontalHeader();
    int total = 0;
    int widest = 0;
    for (int i = 0; i < model.columnCount(); ++i) {
        const int letters = view_->fontMetrics().averageCharWidth() * model.Column(i).letters + spacing::large;
        header.resizeSection(i, std::max(letters, header.sectionSizeHint(i)));
        total += header.sectionSize(i);
        widest = model.Column(i).letters > model.Column(widest).letters ? i : widest;
    }
    // The column of the longest texts takes what the window has to spare, and gives up to half of its own width.
    if (model.columnCount() > 1) {
        // The scroll bar of more rows than the window shows must not cover the last column.
        const int room = view_->width() - view_->verticalHeader()->sizeHint().width() -
                         view_->verticalScrollBar()->sizeHint().width();
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
    for (int i = 0; i < view_->Model().columnCount(); ++i) {
        widths.append(view_->columnWidth(i));
    }
    Steps steps(program_.services().errors, setup_.module, u"Save Columns"_s);
    steps.Step(u"Saving Column Widths"_s, [&] { settings_.SaveWidths(widths); });
}

void BoundGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (!view_->CommitCell()) {
        return;
    }
    if (const auto choice = program_.services().dialogs.AskFont(ToFontChoice(view_->font()))) {
        view_->ApplyFont(ToFont(*choice));
        Steps steps(program_.services().errors, setup_.module, u"Choose Font"_s);
        steps.Step(u"Saving Font"_s, [&] { settings_.SaveFont(*choice); });
    }
}

void BoundGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && lblCaption_->geometry().contains(event->pos())) {
        view_->SelectAll();
    }
}

print::GridSelection BoundGrid::ToPrint() {
    const BoundModel& model = view_->Model();
    print::GridSelection grid;
    grid.caption = lblCaption_->text();
    grid.font = ToFontChoice(view_->font());
    for (int i = 0; i < model.columnCount(); ++i) {
        const double width = view_->columnWidth(i) * twipsPerInch / view_->logicalDpiX();
        grid.columns.push_back({model.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString(), width});
    }
    grid.rowCount = static_cast<int>(view_->SelectedRows().size());
    grid.text = [this, rows = view_->SelectedRows()](int row, int column) {
        const Value& value = view_->Rows().At(rows[static_cast<size_t>(row)], column);
        return view_->Texts().Shown(value, view_->Model().Column(column).kind);
    };
    return grid;
}

} // namespace velmora
