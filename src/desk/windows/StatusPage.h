#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"
#include "desk/windows/StatusList.h"

#include <optional>

class QAction;
class QLabel;
class QLineEdit;
class QListView;
class QPlainTextEdit;

namespace velmora {

class AssetInfo;

// The page that shows where a person is booked, or who is booked into a location. A location can be renamed and
// deleted from its context menu.
class StatusPage : public DeskPage {
    Q_OBJECT

public:
    explicit StatusPage(DeskHost& host);
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;
    // Lists the locations when persons were listed, or nothing yet.
    void Chosen() override;

private:
    QWidget* MakeListColumn();
    QWidget* MakeSummary();
    void AddAssetMenu();
    void optStatusType_Click(int index);
    void lstStatus_Click();
    void txtFind_Change(const QString& text);
    void FillList();
    void ShowCount();
    std::optional<StatusEntry> PickedEntry() const;
    void ShowSummary(const QStringList& lines);
    void mnuRename_Click();
    void mnuDelete_Click();
    // The row of a location in the list, -1 while it is not there.
    int RowOfAsset(int number) const;
    // Runs on the picked location; fills the list anew when it says that it changed the location.
    void ChangeAsset(const QString& procedure, const std::function<bool(AssetInfo&)>& change);

    DeskHost& host_;
    OptionGroup optStatusType;
    StatusList model_;
    QListView* lstStatus;
    QPlainTextEdit* picStatus;
    QLineEdit* txtFind;
    QLabel* lblCount;
    QAction* mnuRename = nullptr;
    QAction* mnuDelete = nullptr;
};

} // namespace velmora
