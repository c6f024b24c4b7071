#pragma once

#include "desk/windows/DeskPage.h"
#include "reports/ReportContext.h"

#include <QElapsedTimer>
#include <QWidget>

#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTabBar;
class QTimer;

namespace velmora {

// What the main window works with; all of it outlives the window.
struct DeskParts {
    Program& program;
    print::PrintJob& job;
    // Runs a report of any kind.
    std::function<void(ReportContext&, const ReportRequest&)> runReport;
    // Shows the notes of a reservation in front of a window, and returns when they are gone.
    std::function<void(qint32 reservation, QWidget* owner)> openNotes;
};

// The main window: seven pages, the state that their controls stand for, and the commands that run reports.
class frmScmain : public QWidget, public DeskHost, public ReportView {
    Q_OBJECT

public:
    explicit frmScmain(DeskParts parts);
    ~frmScmain() override;
    Q_DISABLE_COPY_MOVE(frmScmain)

    // Opens the shared database, loads the lookup lists and sets the pages to the start of the day. Call it once,
    // before the window is shown.
    void Form_Load();

    // DeskHost
    Program& TheProgram() override { return parts_.program; }
    DeskState& State() override { return state_; }
    engine::Database& Database() override;
    bool StorePages() override;
    void RunReport(const ReportRequest& request) override;
    void OpenNotes(qint32 reservation) override;
    void ShowNumbers(const QString& asset, const QString& reservation) override;

    // ReportView
    void SetCloseCaption(const QString& caption) override;
    void ShowProgress(const QString& text, int percent) override;
    void HideProgress() override;

    // The key of the tab chosen, which is also its topic in the help.
    QString CurrentPageKey() const;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The page of a tab, made when it is first asked for.
    DeskPage& Page(int index);
    // Makes the window large enough for the page, as far as the screen is.
    void GrowTo(const DeskPage& page);
    void ShowPage(DeskPage& page);
    void AddTabKeys();
    QLayout* MakeFooter();
    DeskPage& CurrentPage();
    bool ShowsTasks() const;
    // What the Return key presses: the button with the focus; elsewhere the page's own button, null for none.
    QPushButton* ReturnButton();
    void StoreControls();
    void SetStartState();
    void ApplyPrinterSettings();
    // Runs what a handler does; its failures are reported with the procedure's name.
    void Guard(const QString& procedure, const std::function<void()>& work);

    void Form_Activate();
    void Form_QueryUnload();
    void TabStrip1_Click();
    void ShowTab();
    void cmdClose_Click();
    void Timer1_Timer();

    const Services& services() const { return parts_.program.services(); }

    DeskParts parts_;
    DeskState state_;
    QTabBar* TabStrip1;
    QStackedWidget* stack_;
    QPushButton* cmdClose;
    QLabel* lblStatus;
    QProgressBar* pbStatus;
    QElapsedTimer lastProgress_;
    QTimer* Timer1;
    QLineEdit* lblAsset;
    QLineEdit* lblID;
    QWidget* numbers_ = nullptr;
    // By tab; none for those that were not on view yet, which cost no time at the start.
    std::array<DeskPage*, 7> pages_{};
};

} // namespace velmora
