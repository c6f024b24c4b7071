#include "print/windows/frmPrintStyles.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "print/windows/SampleView.h"
#include "print/windows/StyleModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace velmora::print {

namespace {

// Draws a row's sample as reports draw its line.
class SampleDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const auto& rows = static_cast<const StyleModel*>(index.model())->Rows();
        const PrintAttribute& row = rows[static_cast<size_t>(index.row())];
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

frmPrintStyles::frmPrintStyles(const Services& services, StyleStore& store, QWidget* parent)
    : QDialog(parent), services_(services), store_(store), model_(new StyleModel(this)), grdStyles_(new QTableView),
      lblNotice_(new QLabel), cmdAdd(MakeButton(QStringLiteral("cmdAdd"), QStringLiteral("&Add"))),
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
    Connect();
    Form_Load();
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
    connect(model_, &QAbstractItemModel::modelReset, this, &frmPrintStyles::Rows_Changed);
}

void frmPrintStyles::Form_Load() {
    grdStyles_->setModel(model_);
    grdStyles_->setItemDelegateForColumn(StyleModel::SampleColumn, new SampleDelegate(grdStyles_));
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
    header.setSectionResizeMode(StyleModel::Caption, QHeaderView::Stretch);
    header.setSectionResizeMode(StyleModel::SampleColumn, QHeaderView::Fixed);
    header.resizeSection(StyleModel::SampleColumn, SampleView({}).sizeHint().width());
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Styles"));
    const bool read = steps.Step(QStringLiteral("Reading Print Styles"), [&] { base_ = store_.Read(); });
    model_->SetRows(base_);
    for (QWidget* control : {static_cast<QWidget*>(grdStyles_), static_cast<QWidget*>(cmdAdd),
                             static_cast<QWidget*>(cmdDelete), static_cast<QWidget*>(cmdOK)}) {
        control->setEnabled(read);
    }
    TranslateForm(*this);
    resize(sizeHint().expandedTo(QSize(720, 420)));
    CenterForm(*this);
}

void frmPrintStyles::Rows_Changed() {
    const QStringList duplicates = model_->Duplicates();
    lblNotice_->setVisible(!duplicates.isEmpty());
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, WarningColour(colours));
    lblNotice_->setPalette(colours);
    lblNotice_->setText(Translate(QStringLiteral("In the list more than once, where the first row counts: %1"))
                            .arg(duplicates.join(QStringLiteral(", "))));
    cmdDelete->setEnabled(model_->rowCount() > 0);
}

void frmPrintStyles::cmdAdd_Click() {
    const QModelIndex added = model_->index(model_->Add(), StyleModel::Caption);
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
    const int row = model_->RowWithoutCaption();
    const bool wasThere =
        std::any_of(base_.begin(), base_.end(), [](const PrintAttribute& known) { return known.caption.isEmpty(); });
    if (row < 0 || wasThere) {
        return true;
    }
    Ask(Translate(QStringLiteral("Row %1 has no caption. Enter the caption, or delete the row.")).arg(row + 1),
        Buttons::Ok, Icon::Exclamation);
    grdStyles_->setCurrentIndex(model_->index(row, StyleModel::Caption));
    grdStyles_->setFocus();
    return false;
}

void frmPrintStyles::cmdOK_Click() {
    // A caption that is still being typed is taken with the focus.
    cmdOK->setFocus();
    if (RowsAreComplete() && (model_->Rows() == base_ || Save())) {
        accept();
    }
}

bool frmPrintStyles::Save() {
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Styles"));
    StyleRows rows = model_->Rows();
    for (;;) {
        std::optional<StyleRows> stored;
        if (!steps.Step(QStringLiteral("Saving Print Styles"), [&] { stored = store_.Replace(base_, rows); })) {
            return false;
        }
        if (!stored) {
            return true;
        }
        // Another user was here. What both did is put together, and stored over what is there now.
        const auto settled = Settle(MergeStyles(base_, rows, *stored), *stored);
        if (!settled) {
            return false;
        }
        base_ = *stored;
        rows = *settled;
    }
}

std::optional<StyleRows> frmPrintStyles::Settle(const MergedStyles& merged, const StyleRows& stored) {
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
    return answer == Answer::Yes ? merged.rows : MergeStyles(base_, stored, model_->Rows()).rows;
}

Answer frmPrintStyles::Ask(const QString& text, Buttons buttons, Icon icon) {
    return services_.dialogs.ShowMessage({text, CurrentProgram().Title(), buttons, icon});
}

void frmPrintStyles::reject() {
    if (model_->Rows() != base_ && Ask(Translate(QStringLiteral("Close without saving the changed print styles?")),
                                       Buttons::YesNo, Icon::Question) != Answer::Yes) {
        return;
    }
    QDialog::reject();
}

} // namespace velmora::print
