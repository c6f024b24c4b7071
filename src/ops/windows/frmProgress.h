#pragma once

#include "base/services/UserInterface.h"

#include <QWidget>

#include <memory>

class QLabel;
class QProgressBar;

namespace velmora {

// Says in one line what the program is doing, with a bar where it is known how far it is. Stands beside the other
// windows and takes no focus; a click hides it.
class frmProgress : public QWidget {
    Q_OBJECT

public:
    frmProgress();

    // Shows the text, painted at once even while the caller keeps the thread busy; an empty one hides the window.
    // `percent` is 0 to 100; without it there is no bar. A text that is shown already only moves the bar.
    void ShowStatus(const QString& text, std::optional<double> percent);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void Form_Load();
    void PaintNow();

    QLabel* Image1;
    QLabel* Label1;
    QProgressBar* pnlProgress;
};

// The progress window of a program with windows, made when it is first needed.
class WindowProgress : public ProgressWindow {
public:
    void Show(const QString& text, std::optional<double> percent) override;

private:
    std::unique_ptr<frmProgress> window_;
};

} // namespace velmora
