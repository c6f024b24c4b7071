#include "desk/windows/StatusPage.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "data/LookupLists.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTextBlock>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 locations = 1;
constexpr int listWidth = 280;

// The asset of that number, null when there is none. It stands at its number's place unless there are numbers below 1.
AssetCollection::Item FindAsset(int number) {
    const AssetCollection& assets = Assets();
    if (auto asset = assets.At(number); asset != nullptr && asset->nAsset() == number) {
        return asset;
    }
    for (int position = 1; position <= assets.Count(); ++position) {
        if (auto asset = assets.At(position); asset->nAsset() == number) {
            return asset;
        }
    }
    return nullptr;
}

} // namespace

StatusPage::StatusPage(DeskHost& host)
    : host_(host), optStatusType(this, u"optStatusType"_s, {{0, u"&Person"_s}, {1, u"&Location"_s}}),
      lstStatus(new QListView), picStatus(new QPlainTextEdit), txtFind(new QLineEdit),
      lblCount(NewHint(u"lblCount"_s, {})) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    row->setSpacing(spacing::large);
    row->addWidget(MakeListColumn());
    row->addWidget(MakeSummary(), 1);
    optStatusType.Choose(0);
    AddAssetMenu();
    connect(optStatusType.Group(), &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen) {
            optStatusType_Click(index);
        }
    });
    connect(txtFind, &QLineEdit::textChanged, this, &StatusPage::txtFind_Change);
    connect(lstStatus->selectionModel(), &QItemSelectionModel::selectionChanged, this, &StatusPage::lstStatus_Click);
}

QWidget* StatusPage::MakeListColumn() {
    auto* side = new QWidget;
    side->setMinimumWidth(listWidth);
    side->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::normal);
    const Frame frame = NewFrame(u"Frame1"_s, u"Status Type"_s);
    auto* options = new QHBoxLayout;
    options->setSpacing(2 * spacing::large);
    for (QAbstractButton* option : optStatusType.Buttons()) {
        options->addWidget(option);
    }
    options->addStretch();
    frame.column->addLayout(options);
    column->addWidget(frame.box);

    txtFind->setObjectName(u"txtFind"_s);
    txtFind->setClearButtonEnabled(true);
    txtFind->addAction(GlyphIcon(Glyph::Find), QLineEdit::LeadingPosition);
    column->addLayout(Captioned(NewControl<QLabel>(u"lblFind"_s, u"&Find"_s), txtFind));
    lstStatus->setObjectName(u"lstStatus"_s);
    lstStatus->setAccessibleName(u"Status List"_s);
    lstStatus->setModel(&model_);
    lstStatus->setUniformItemSizes(true);
    lstStatus->setAlternatingRowColors(true);
    lstStatus->setContextMenuPolicy(Qt::ActionsContextMenu);
    column->addWidget(lstStatus, 1);
    column->addWidget(lblCount);
    return side;
}

QWidget* StatusPage::MakeSummary() {
    picStatus->setObjectName(u"picStatus"_s);
    picStatus->setAccessibleName(u"Summary"_s);
    picStatus->setReadOnly(true);
    picStatus->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    picStatus->setPlaceholderText(u"Pick a person or location to see its current and coming reservations."_s);
    picStatus->document()->setDocumentMargin(spacing::normal);
    return picStatus;
}

void StatusPage::AddAssetMenu() {
    mnuRename = new QAction(u"&Rename..."_s, lstStatus);
    mnuRename->setObjectName(u"mnuRename"_s);
    mnuRename->setShortcut(Qt::Key_F2);
    mnuDelete = new QAction(u"&Delete"_s, lstStatus);
    mnuDelete->setObjectName(u"mnuDelete"_s);
    mnuDelete->setShortcut(Qt::Key_Delete);
    for (QAction* action : {mnuRename, mnuDelete}) {
        action->setShortcutContext(Qt::WidgetShortcut);
        action->setEnabled(false);
        lstStatus->addAction(action);
    }
    connect(mnuRename, &QAction::triggered, this, &StatusPage::mnuRename_Click);
    connect(mnuDelete, &QAction::triggered, this, &StatusPage::mnuDelete_Click);
}

void StatusPage::Store(DeskState& state) const {
    state.StatusType = static_cast<qint16>(optStatusType.Chosen());
}

void StatusPage::Load(const DeskState& state) {
    const QSignalBlocker quiet(optStatusType.Group());
    optStatusType.Choose(state.StatusType);
}

void StatusPage::Chosen() {
    optStatusType.Choose(locations);
}

void StatusPage::optStatusType_Click(int index) {
    host_.State().StatusType = static_cast<qint16>(index);
    txtFind->clear();
    FillList();
}

void StatusPage::FillList() {
    lstStatus->hide();
    model_.SetEntries(FillStatusList(host_.TheProgram(), host_.State().StatusType, host_.Database()));
    lstStatus->show();
    lstStatus->scrollToTop();
    ShowSummary({});
    ShowCount();
}

void StatusPage::ShowCount() {
    const int shown = model_.rowCount();
    const int all = model_.EntryCount();
    lblCount->setText(shown == all ? QString::number(all) : Translate(u"%1 of %2"_s).arg(shown).arg(all));
    mnuRename->setEnabled(false);
    mnuDelete->setEnabled(false);
}

void StatusPage::txtFind_Change(const QString& text) {
    const auto picked = PickedEntry();
    {
        const QSignalBlocker quiet(lstStatus->selectionModel());
        model_.SetFilter(text);
    }
    ShowCount();
    // Who types a name until it alone is left has picked it.
    const int row = picked ? model_.RowOf(*picked) : -1;
    if (row >= 0 || (model_.rowCount() == 1 && !text.isEmpty())) {
        lstStatus->setCurrentIndex(model_.index(std::max(row, 0)));
    }
}

std::optional<StatusEntry> StatusPage::PickedEntry() const {
    // The focus passing through the list picks nothing.
    const QModelIndexList picked = lstStatus->selectionModel()->selectedIndexes();
    return picked.isEmpty() ? std::nullopt : std::optional(model_.Entry(picked.front().row()));
}

void StatusPage::lstStatus_Click() {
    const auto entry = PickedEntry();
    const bool location = entry && host_.State().StatusType == locations;
    mnuRename->setEnabled(location);
    mnuDelete->setEnabled(location);
    if (!entry) {
        return;
    }
    ShowSummary(StatusSummary(host_.TheProgram(), host_.State().StatusType, host_.Database(), *entry));
}

void StatusPage::ShowSummary(const QStringList& lines) {
    picStatus->setPlainText(lines.join(u'\n'));
    QTextCursor heading(picStatus->document());
    heading.select(QTextCursor::BlockUnderCursor);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    heading.mergeCharFormat(bold);
}

void StatusPage::mnuRename_Click() {
    ChangeAsset(u"Rename Asset"_s, [this](AssetInfo& asset) { return asset.Rename(host_.Database()); });
}

void StatusPage::mnuDelete_Click() {
    ChangeAsset(u"Delete Asset"_s, [this](AssetInfo& asset) { return asset.Delete(host_.Database()); });
}

void StatusPage::ChangeAsset(const QString& procedure, const std::function<bool(AssetInfo&)>& change) {
    const auto entry = PickedEntry();
    if (!entry || host_.State().StatusType != locations) {
        return;
    }
    AssetCollection::Item asset = FindAsset(entry->itemData);
    if (asset == nullptr || asset->Name() != entry->text) {
        // Another desk may have made the asset after this one read its list.
        FillAssetCollection(host_.Database());
        asset = FindAsset(entry->itemData);
    }
    bool changed = false;
    Steps steps(host_.TheProgram().services().errors, u"Internal Data"_s, procedure);
    steps.Step(entry->text, [&] {
        if (asset == nullptr) {
            throw ProgramError(ErrorNumber::Unavailable,
                               Translate(u"Record not found, possibly deleted by another user"_s));
        }
        changed = change(*asset);
    });
    if (!changed) {
        return;
    }
    FillAssetCollection(host_.Database());
    FillList();
    if (FindAsset(entry->itemData) == nullptr) {
        return;
    }
    if (RowOfAsset(entry->itemData) < 0) {
        // The new name is not what was looked for.
        txtFind->clear();
    }
    lstStatus->setCurrentIndex(model_.index(RowOfAsset(entry->itemData)));
}

int StatusPage::RowOfAsset(int number) const {
    for (int row = 0; row < model_.rowCount(); ++row) {
        if (model_.Entry(row).itemData == number) {
            return row;
        }
    }
    return -1;
}

} // namespace velmora
