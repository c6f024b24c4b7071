#include "notes/windows/BoundGrid.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Look.h"
#include "base/windows/WindowServices.h"

#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerInch = 1440;
const QString application = u"Velmora"_s;
const QString columnsKey = u"Columns"_s;
const QString fontKey = u"Font"_s;
constexpr int narrowest = 16;
constexpr int widest = 4000;
constexpr double smallest = 4;
constexpr double largest = 96;

// The look of the program with air on both sides of a grid's texts and captions.
class GridStyle : public QProxyStyle {
public:
    explicit GridStyle(QObject* parent) { setParent(parent); }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin ? usual + spacing::small : usual;
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_Table_GridLineColor && widget != nullptr
                   ? static_cast<int>(widget->palette().color(QPalette::Dark).rgba())
                   : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

} // namespace

BoundGrid::BoundGrid(const Program& program, BoundRows rows, RowRules& rules, Setup setup, QWidget* parent)
    : QFrame(parent), program_(program), setup_(std::move(setup)), lblCaption_(new QLabel(setup_.caption)),
      view_(new GridView(program, std::move(rows), rules, setup_.module, this)) {
    setObjectName(setup_.objectName);
    setFrameShape(QFrame::StyledPanel);
    LayOut();
    connect(view_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { columnsChanged_ = columnsChanged_ || columnsSized_; });
    const auto font = KeptFont();
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

QString BoundGrid::Kept(const QString& key) const {
    return program_.services().userSettings.Read(application, setup_.settings, key).value_or(QString());
}

void BoundGrid::Keep(const QString& key, const QString& value, const QString& procedure, const QString& task) {
    Steps steps(program_.services().errors, setup_.module, procedure);
    steps.Step(task, [&] { program_.services().userSettings.Write(application, setup_.settings, key, value); });
}

std::optional<QList<int>> BoundGrid::KeptWidths() const {
    QList<int> widths;
    for (const QString& part : Kept(columnsKey).split(u',')) {
        const int width = part.toInt();
        if (width < narrowest || width > widest) {
            return std::nullopt;
        }
        widths.append(width);
    }
    return widths.size() == view_->Model().columnCount() ? std::optional(widths) : std::nullopt;
}

std::optional<FontChoice> BoundGrid::KeptFont() const {
    const QStringList parts = Kept(fontKey).split(u'|');
    if (parts.size() != 4 || parts[0].isEmpty()) {
        return std::nullopt;
    }
    const double points = parts[1].toDouble();
    // A text that is no number counts as 0.
    return points >= smallest && points <= largest
               ? std::optional(FontChoice{parts[0], points, parts[2] == u"1", parts[3] == u"1"})
               : std::nullopt;
}

QSize BoundGrid::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 12};
}

void BoundGrid::SizeColumns() {
    const auto widths = KeptWidths();
    if (!widths) {
        SizeColumnsByText();
        return;
    }
    for (int i = 0; i < widths->size(); ++i) {
        view_->setColumnWidth(i, widths->at(i));
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
    QStringList widths;
    for (int i = 0; i < view_->Model().columnCount(); ++i) {
        widths.append(QString::number(view_->columnWidth(i)));
    }
    Keep(columnsKey, widths.join(u','), u"Save Columns"_s, u"Saving Column Widths"_s);
}

void BoundGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (!view_->CommitCell()) {
        return;
    }
    if (const auto choice = program_.services().dialogs.AskFont(ToFontChoice(view_->font()))) {
        view_->ApplyFont(ToFont(*choice));
        const QStringList parts{choice->family, QString::number(choice->points), QString::number(int{choice->bold}),
                                QString::number(int{choice->italic})};
        Keep(fontKey, parts.join(u'|'), u"Choose Font"_s, u"Saving Font"_s);
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
        const Value& value = view_->Rows().At(rows[row], column);
        return view_->Texts().Shown(value, view_->Model().Column(column).kind);
    };
    return grid;
}

} // namespace velmora
