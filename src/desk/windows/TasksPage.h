#pragma once

#include "desk/windows/DeskHost.h"
#include "desk/windows/DeskPage.h"
#include "desk/windows/PageParts.h"
#include "tasks/Tasks.h"

#include <array>

class QCheckBox;
class QLabel;
class QPushButton;
class QTimer;

namespace velmora {

class DateRangeBox;

// The page on which staff step through the reservations that need a task and tick each one done.
class TasksPage : public DeskPage, public TaskView {
    Q_OBJECT

public:
    explicit TasksPage(DeskHost& host);
    ~TasksPage() override;
    void Store(DeskState& state) const override;
    void Load(const DeskState& state) override;
    // Selects anew.
    void Chosen() override;
    // Shows what another desk changed meanwhile.
    void Refresh();

private:
    QWidget* MakeSelectionFrame();
    QWidget* MakeTaskFrame();
    QLayout* MakeDetails();
    QLayout* MakeNavigation();
    QLabel* NewValue(const QString& name);
    void AddKeys();
    void tmrRefresh_Timer();

    void ShowTask(const ShownTask& task) override;
    void HideTask(const QString& text) override;
    void ShowNotice(const QString& text);

    void ShowTasks();
    void cmdShowTasks_Click();
    void optViewType_Click(int index);
    void chkCompleted_Click();
    void chkConferenceView_Click();
    void cmdFirst_Click();
    void cmdPrev_Click();
    void cmdNext_Click();
    void cmdLast_Click();
    void cmdNotes_Click();
    void Tick(TaskKind task);
    void ToggleTick();

    // The database is opened after the page is made.
    Tasks& TheTasks();

    DeskHost& host_;
    std::unique_ptr<Tasks> tasks_;
    OptionGroup optViewType;
    DateRangeBox* DateRange1;
    QPushButton* cmdShowTasks;
    QCheckBox* chkConferenceView;
    QCheckBox* chkCompleted;
    QGroupBox* frEvent = nullptr;
    // By TaskKind: chkSLockStart, chkSLockEnd, chkTLockStart, chkTLockEnd.
    std::array<QCheckBox*, allTasks.size()> ticks_{};
    QPushButton* cmdFirst;
    QPushButton* cmdPrev;
    QPushButton* cmdNext;
    QPushButton* cmdLast;
    QPushButton* cmdNotes;
    QLabel* lblPlace;
    QLabel* lblNothing;
    QLabel* lblNotice;
    QLabel* picNotice;
    QLabel* lblLastName;
    QLabel* lblFirstName;
    QLabel* lblOrganization;
    QLabel* lblEnd;
    QLabel* lblEvent;
    QLabel* lblAttendees;
    QLabel* lblAssetName;
    std::optional<TaskKind> tickable_;
    QTimer* tmrRefresh;
};

} // namespace velmora
