#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "data/LookupLists.h"
#include "desk/windows/DeskPage.h"
#include "tasks/QuickStatus.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStringListModel>
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

// The page that shows where a person is booked, or who is booked into a location. A location can be renamed and
// deleted from its context menu.
class StatusPage : public DeskPage {
public:
    explicit StatusPage(DeskHost& host);
    // Lists the locations when persons were listed, or nothing yet.
    void Chosen() override { optStatusType.Choose(locations); }

private:
    QWidget* MakeListColumn();
    QWidget* MakeSummary();
    QAction* NewAssetAction(const QString& name, const QString& caption, Qt::Key key, void (StatusPage::*run)());
    void optStatusType_Click(int index);
    void lstStatus_Click();
    void txtFind_Change(const QString& text);
    void FillList();
    // Lists the entries that contain what is typed into the search box, letter case aside.
    void ShowMatches();
    std::optional<StatusEntry> PickedEntry() const;
    void ShowSummary(const QStringList& lines);
    void mnuRename_Click();
    void mnuDelete_Click();
    // The row on view of the first such entry; -1 when there is none.
    int FindRow(const std::function<bool(const StatusEntry&)>& isWanted) const;
    // Runs on the picked location; fills the list anew when it says that it changed the location.
    void ChangeAsset(const QString& procedure, const std::function<bool(AssetInfo&)>& change);
    bool ListsLocations() const { return Host().State().StatusType == locations; }

    OptionGroup optStatusType;
    std::vector<StatusEntry> entries_;
    // Of the entries those on view, and their texts.
    std::vector<StatusEntry> shown_;
    QStringListModel texts_;
    QListView* lstStatus;
    QPlainTextEdit* picStatus;
    QLineEdit* txtFind;
    QLabel* lblCount;
    QAction* mnuRename;
    QAction* mnuDelete;
};

StatusPage::StatusPage(DeskHost& host)
    : DeskPage(host),
      optStatusType(NewOptions(u"optStatusType"_s, {{0, u"&Person"_s}, {1, u"&Location"_s}}, host.State().StatusType)),
      lstStatus(new QListView), picStatus(new QPlainTextEdit), txtFind(new QLineEdit),
      lblCount(NewHint(u"lblCount"_s, {})),
      mnuRename(NewAssetAction(u"mnuRename"_s, u"&Rename..."_s, Qt::Key_F2, &StatusPage::mnuRename_Click)),
      mnuDelete(NewAssetAction(u"mnuDelete"_s, u"&Delete"_s, Qt::Key_Delete, &StatusPage::mnuDelete_Click)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    row->setSpacing(spacing::large);
    row->addWidget(MakeListColumn());
    row->addWidget(MakeSummary(), 1);
    optStatusType.Choose(0);
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
    lstStatus->setModel(&texts_);
    lstStatus->setEditTriggers(QAbstractItemView::NoEditTriggers);
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

QAction* StatusPage::NewAssetAction(const QString& name, const QString& caption, Qt::Key key,
                                    void (StatusPage::*run)()) {
    auto* action = new QAction(caption, lstStatus);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setEnabled(false);
    lstStatus->addAction(action);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void StatusPage::optStatusType_Click(int index) {
    Host().State().StatusType = static_cast<qint16>(index);
    txtFind->clear();
    FillList();
}

void StatusPage::FillList() {
    entries_ = FillStatusList(Host().TheProgram(), Host().State().StatusType, Host().Database());
    lstStatus->hide();
    ShowMatches();
    lstStatus->show();
    lstStatus->scrollToTop();
    ShowSummary({});
}

void StatusPage::ShowMatches() {
    shown_.clear();
    QStringList texts;
    for (const StatusEntry& entry : entries_) {
        if (entry.text.contains(txtFind->text(), Qt::CaseInsensitive)) {
            shown_.push_back(entry);
            texts += entry.text;
        }
    }
    texts_.setStringList(texts);
    lblCount->setText(shown_.size() == entries_.size()
                          ? QString::number(entries_.size())
                          : Translate(u"%1 of %2"_s).arg(shown_.size()).arg(entries_.size()));
    mnuRename->setEnabled(false);
    mnuDelete->setEnabled(false);
}

int StatusPage::FindRow(const std::function<bool(const StatusEntry&)>& isWanted) const {
    const auto found = std::ranges::find_if(shown_, isWanted);
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

void StatusPage::txtFind_Change(const QString& text) {
    const auto picked = PickedEntry();
    {
        const QSignalBlocker quiet(lstStatus->selectionModel());
        ShowMatches();
    }
    // Who types a name until it alone is left has picked it.
    const int row = picked ? FindRow([&](const StatusEntry& entry) { return entry == *picked; }) : -1;
    if (row >= 0 || (shown_.size() == 1 && !text.isEmpty())) {
        lstStatus->setCurrentIndex(texts_.index(std::max(row, 0)));
    }
}

std::optional<StatusEntry> StatusPage::PickedEntry() const {
    // The focus passing through the list picks nothing.
    const QModelIndexList picked = lstStatus->selectionModel()->selectedIndexes();
    return picked.isEmpty() ? std::nullopt : std::optional(shown_.at(static_cast<size_t>(picked.front().row())));
}

void StatusPage::lstStatus_Click() {
    const auto entry = PickedEntry();
    const bool location = entry && ListsLocations();
    mnuRename->setEnabled(location);
    mnuDelete->setEnabled(location);
    if (!entry) {
        return;
    }
    ShowSummary(StatusSummary(Host().TheProgram(), Host().State().StatusType, Host().Database(), *entry));
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
    ChangeAsset(u"Rename Asset"_s, [this](AssetInfo& asset) { return asset.Rename(Host().Database()); });
}

void StatusPage::mnuDelete_Click() {
    ChangeAsset(u"Delete Asset"_s, [this](AssetInfo& asset) { return asset.Delete(Host().Database()); });
}

void StatusPage::ChangeAsset(const QString& procedure, const std::function<bool(AssetInfo&)>& change) {
    const auto entry = PickedEntry();
    if (!entry || !ListsLocations()) {
        return;
    }
    AssetCollection::Item asset = FindAsset(entry->itemData);
    if (asset == nullptr || asset->Name() != entry->text) {
        // Another desk may have made the asset after this one read its list.
        FillAssetCollection(Host().Database());
        asset = FindAsset(entry->itemData);
    }
    bool changed = false;
    Steps steps(Host().TheProgram().services().errors, u"Internal Data"_s, procedure);
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
    FillAssetCollection(Host().Database());
    FillList();
    if (FindAsset(entry->itemData) == nullptr) {
        return;
    }
    const auto isIt = [&](const StatusEntry& each) { return each.itemData == entry->itemData; };
    if (FindRow(isIt) < 0) {
        // The new name is not what was looked for.
        txtFind->clear();
    }
    lstStatus->setCurrentIndex(texts_.index(FindRow(isIt)));
}

} // namespace

DeskPage* NewStatusPage(DeskHost& host) {
    return new StatusPage(host);
}

} // namespace velmora
