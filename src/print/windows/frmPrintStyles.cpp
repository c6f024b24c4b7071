#include "print/windows/frmPrintStyles.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "print/windows/SampleView.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace velmora::print {

namespace {

// The columns: the caption, a tick box for each style bit, and the sample.
constexpr std::array<qint16, 5> columnBits = {0, Bold, Italic, Underlined, GreyBox};
constexpr int captionColumn = 0;
constexpr int sampleColumn = static_cast<int>(columnBits.size());
// Of the caption, the style as the table has it: other bits of it stay.
constexpr int styleRole = Qt::UserRole;

QList<QStandardItem*> MakeRow(const PrintAttribute& row) {
    QList<QStandardItem*> items;
    for (int column = 0; column <= sampleColumn; ++column) {
        items.append(new QStandardItem);
        items.last()->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
    items[captionColumn]->setText(row.caption);
    items[captionColumn]->setData(row.style, styleRole);
    items[captionColumn]->setEditable(true);
    for (int column = 1; column < sampleColumn; ++column) {
        items[column]->setCheckable(true);
        const bool isSet = (row.style & columnBits[static_cast<size_t>(column)]) != 0;
        items[column]->setCheckState(isSet ? Qt::Checked : Qt::Unchecked);
    }
    return items;
}

PrintAttribute RowAt(const QAbstractItemModel& model, int row) {
    const QModelIndex caption = model.index(row, captionColumn);
    int style = caption.data(styleRole).toInt();
    for (int column = 1; column < sampleColumn; ++column) {
        const int bit = columnBits[static_cast<size_t>(column)];
        const bool isSet = caption.siblingAtColumn(column).data(Qt::CheckStateRole).toInt() == Qt::Checked;
        style = isSet ? style | bit : style & ~bit;
    }
    return {caption.data().toString(), static_cast<qint16>(style)};
}

// Draws a row's sample as reports draw its line.
class SampleDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const PrintAttribute row = RowAt(*index.model(), index.row());
        const pages::Document document =
            SampleDocument({row.caption, Translate(QStringLiteral("Value")), 0, row.style});
        DrawSample(*painter, option.rect, document, option.widget->logicalDpiX());
    }
};

QPushButton* MakeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    return button;
}

} // namespace

frmPrintStyles::frmPrintStyles(const Services& services, engine::Database& database, QWidget* parent)
    : QDialog(parent), services_(services), database_(database), model_(new QStandardItemModel(this)),
      grdStyles_(new QTableView), lblNotice_(new QLabel),
      cmdAdd(MakeButton(QStringLiteral("cmdAdd"), QStringLiteral("&Add"))),
      cmdDelete(MakeButton(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"))),
      cmdOK(MakeButton(QStringLiteral("cmdOK"), QStringLiteral("OK"))),
      cmdCancel(MakeButton(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"))) {
    setObjectName(QStringLiteral("frmPrintStyles"));
    setWindowTitle(QStringLiteral("Print Styles"));
    auto* explanation =
        new QLabel(QStringLiteral("How reports print the value behind a caption. A caption must be written exactly as "
                                  "the report has it, capital letters included."));
    explanation->setWordWrap(true);
    grdStyles_->setObjectName(QStringLiteral("grdStyles"));
    grdStyles_->setAccessibleName(QStringLiteral("Print styles by caption"));
    lblNotice_->setObjectName(QStringLiteral("lblNotice"));
    lblNotice_->setWordWrap(true);
    cmdAdd->setIcon(GlyphIcon(Glyph::Add));
    cmdDelete->setIcon(GlyphIcon(Glyph::Delete));
    cmdOK->setDefault(true);
    cmdAdd->setAutoDefault(false);
    cmdDelete->setAutoDefault(false);
    LayOut(*explanation);
    Form_Load();
    Connect();
}

void frmPrintStyles::LayOut(QLabel& explanation) {
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::normal);
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdDelete);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::normal);
    column->addWidget(&explanation);
    column->addWidget(grdStyles_, 1);
    column->addWidget(lblNotice_);
    column->addLayout(buttons);
}

void frmPrintStyles::Connect() {
    auto* deleteKey = new QShortcut(QKeySequence(QKeySequence::Delete), grdStyles_);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &frmPrintStyles::cmdDelete_Click);
    connect(cmdAdd, &QPushButton::clicked, this, &frmPrintStyles::cmdAdd_Click);
    connect(cmdDelete, &QPushButton::clicked, this, &frmPrintStyles::cmdDelete_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmPrintStyles::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmPrintStyles::reject);
    connect(model_, &QAbstractItemModel::dataChanged, this, &frmPrintStyles::Rows_Changed);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, &frmPrintStyles::Rows_Changed);
    connect(model_, &QAbstractItemModel::rowsInserted, this, &frmPrintStyles::Rows_Changed);
}

void frmPrintStyles::Form_Load() {
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Styles"));
    const bool read =
        steps.Step(QStringLiteral("Reading Print Styles"), [&] { base_ = ReadPrintAttributes(database_); });
    for (const char* heading : {"Caption", "Bold", "Italic", "Underlined", "Grey Box", "Sample"}) {
        model_->setHorizontalHeaderItem(model_->columnCount(), new QStandardItem(Translate(QLatin1String(heading))));
    }
    for (const PrintAttribute& row : base_) {
        model_->appendRow(MakeRow(row));
    }
    grdStyles_->setModel(model_);
    grdStyles_->setItemDelegateForColumn(sampleColumn, new SampleDelegate(grdStyles_));
    grdStyles_->setAlternatingRowColors(true);
    grdStyles_->setShowGrid(false);
    grdStyles_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdStyles_->setTabKeyNavigation(false);
    grdStyles_->verticalHeader()->hide();
    grdStyles_->verticalHeader()->setDefaultSectionSize(grdStyles_->fontMetrics().height() + spacing::large);
    QHeaderView& header = *grdStyles_->horizontalHeader();
    header.setHighlightSections(false);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header.setMinimumSectionSize(grdStyles_->fontMetrics().horizontalAdvance(QStringLiteral("Underlined")));
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(captionColumn, QHeaderView::Stretch);
    header.setSectionResizeMode(sampleColumn, QHeaderView::Fixed);
    header.resizeSection(sampleColumn, SampleView({}).sizeHint().width());
    Rows_Changed();
    for (QWidget* control : {static_cast<QWidget*>(grdStyles_), static_cast<QWidget*>(cmdAdd),
                             static_cast<QWidget*>(cmdDelete), static_cast<QWidget*>(cmdOK)}) {
        control->setEnabled(read);
    }
    TranslateForm(*this);
    resize(sizeHint().expandedTo(QSize(720, 420)));
    CenterForm(*this);
}

StyleRows frmPrintStyles::Rows() const {
    StyleRows rows;
    for (int row = 0; row < model_->rowCount(); ++row) {
        rows.push_back(RowAt(*model_, row));
    }
    return rows;
}

QStringList frmPrintStyles::MarkDuplicates() {
    const QSignalBlocker quiet(model_);
    QStringList seen;
    QStringList duplicates;
    for (int row = 0; row < model_->rowCount(); ++row) {
        QStandardItem& item = *model_->item(row, captionColumn);
        const bool isLater = seen.contains(item.text());
        item.setToolTip(isLater ? Translate(QStringLiteral("Not used: an earlier row has the same caption"))
                                : QString());
        if (isLater && !item.text().isEmpty()) {
            duplicates.append(item.text());
        }
        seen.append(item.text());
    }
    duplicates.removeDuplicates();
    return duplicates;
}

void frmPrintStyles::Rows_Changed() {
    // The samples show what other columns hold.
    grdStyles_->viewport()->update();
    const QStringList duplicates = MarkDuplicates();
    lblNotice_->setVisible(!duplicates.isEmpty());
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, WarningColour(colours));
    lblNotice_->setPalette(colours);
    lblNotice_->setText(Translate(QStringLiteral("In the list more than once, where the first row counts: %1"))
                            .arg(duplicates.join(QStringLiteral(", "))));
    cmdDelete->setEnabled(model_->rowCount() > 0);
}

void frmPrintStyles::cmdAdd_Click() {
    model_->appendRow(MakeRow({}));
    const QModelIndex added = model_->index(model_->rowCount() - 1, captionColumn);
    grdStyles_->setFocus();
    grdStyles_->setCurrentIndex(added);
    grdStyles_->edit(added);
}

void frmPrintStyles::cmdDelete_Click() {
    const QModelIndex current = grdStyles_->currentIndex();
    if (current.isValid()) {
        model_->removeRow(current.row());
    }
}

bool frmPrintStyles::RowsAreComplete() {
    const auto isWithoutCaption = [](const PrintAttribute& row) { return row.caption.isEmpty(); };
    const StyleRows rows = Rows();
    const auto found = std::find_if(rows.begin(), rows.end(), isWithoutCaption);
    if (found == rows.end() || std::any_of(base_.begin(), base_.end(), isWithoutCaption)) {
        return true;
    }
    const int row = static_cast<int>(found - rows.begin());
    Ask(Translate(QStringLiteral("Row %1 has no caption. Enter the caption, or delete the row.")).arg(row + 1),
        Buttons::Ok, Icon::Exclamation);
    grdStyles_->setCurrentIndex(model_->index(row, captionColumn));
    grdStyles_->setFocus();
    return false;
}

void frmPrintStyles::cmdOK_Click() {
    // A caption that is still being typed is taken with the focus.
    cmdOK->setFocus();
    if (RowsAreComplete() && (Rows() == base_ || Save())) {
        accept();
    }
}

bool frmPrintStyles::Save() {
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Styles"));
    StyleRows base = base_;
    StyleRows rows = Rows();
    for (;;) {
        std::optional<StyleRows> stored;
        if (!steps.Step(QStringLiteral("Saving Print Styles"),
                        [&] { stored = ReplacePrintAttributes(database_, base, rows); })) {
            return false;
        }
        if (!stored) {
            return true;
        }
        // Another user was here. What both did is put together, and stored over what is there now.
        const auto settled = Settle(base, rows, *stored);
        if (!settled) {
            return false;
        }
        base = *stored;
        rows = *settled;
    }
}

std::optional<StyleRows> frmPrintStyles::Settle(const StyleRows& base, const StyleRows& mine, const StyleRows& stored) {
    const MergedStyles merged = MergeStyles(base, mine, stored);
    if (merged.conflicts.isEmpty()) {
        return merged.rows;
    }
    const Answer answer =
        Ask(Translate(QStringLiteral("Another user changed the same rows while this window was open: %1.\n\nYes keeps "
                                     "your rows, No keeps the other user's, Cancel goes on editing."))
                .arg(merged.conflicts.join(QStringLiteral(", "))),
            Buttons::YesNoCancel, Icon::Question);
    if (answer == Answer::Cancel) {
        return std::nullopt;
    }
    // Theirs in the conflicts, mine elsewhere: the same merge seen from the other side.
    return answer == Answer::Yes ? merged.rows : MergeStyles(base, stored, mine).rows;
}

Answer frmPrintStyles::Ask(const QString& text, Buttons buttons, Icon icon) {
    return services_.dialogs.ShowMessage({text, CurrentProgram().Title(), buttons, icon});
}

void frmPrintStyles::reject() {
    if (Rows() != base_ && Ask(Translate(QStringLiteral("Close without saving the changed print styles?")),
                               Buttons::YesNo, Icon::Question) != Answer::Yes) {
        return;
    }
    QDialog::reject();
}

} // namespace velmora::print
