#pragma once

#include "base/Program.h"
#include "print/pages/PageOutput.h"

#include <QWidget>

class QLabel;
class QMenu;
class QToolBar;

namespace velmora::print {

class FindBar;
class GoToBar;
class PageView;

// The preview window of one finished report. It keeps the report's pages and lives as long as its user wants, apart
// from the report that made it. Services and printer outlive it.
class frmPrintPreview : public QWidget {
    Q_OBJECT

public:
    // The report has at least one page.
    frmPrintPreview(const Services& services, PagePrinter& printer, PreviewReport report);
    ~frmPrintPreview() override;
    Q_DISABLE_COPY_MOVE(frmPrintPreview)

    qint16 PageCount() const { return static_cast<qint16>(document_.pages.size()); }
    // The number of the page on view, from 1.
    qint16 CurrentPage() const { return currentPage_; }
    // Brings what the window shows up to date with the current page.
    void ShowPage();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void Toolbar1_ButtonClick(const QString& key);
    void picPage_Click(int index);
    void PageView_LeftPage(int direction);
    void FindBar_Found();

    struct Command;
    void AddButtons();
    void AddCommands();
    void AddCommand(const Command& command);
    void OpenFind();
    void OpenGoTo();
    void GoToPage(int page);
    // Prints `count` pages from the index on.
    void Print(const QString& task, int first, int count);
    void CopyText();
    void SavePdf();
    void ShowZoom();

    const Services& services_;
    PagePrinter& printer_;
    const pages::Document document_;
    const std::optional<Orientation> orientation_;
    qint16 currentPage_ = 1;
    // Questions of this window that are open: the window is active again behind them without having been left.
    int openQuestions_ = 0;
    bool leftForQuestion_ = false;

    QToolBar* Toolbar1;
    QLabel* Picture1;
    QLabel* lblNotice_;
    QLabel* lblZoom_;
    PageView* picPage;
    FindBar* findBar_;
    GoToBar* goToBar_;
    QMenu* menu_;
};

// Opens a preview window for each report. The window is shown beside all others, and is gone when its user closes it.
// Services and printer outlive the windows.
class WindowPreviews : public PreviewWindows {
public:
    WindowPreviews(const Services& services, PagePrinter& printer) : services_(services), printer_(printer) {}
    void Open(PreviewReport report) override;

private:
    const Services& services_;
    PagePrinter& printer_;
};

} // namespace velmora::print
