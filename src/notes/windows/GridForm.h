#pragma once

#include "base/Program.h"
#include "engine/Database.h"
#include "print/PrintJob.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QToolButton;

namespace velmora {

class BoundGrid;
class Steps;

// What the windows of the notes work with. All of it outlives them.
struct NotesContext {
    const Program& program;
    engine::Database& database;
    print::PrintJob& job;
};

// What the windows around a bound grid share: when they count as active and as left, and how they close.
//
// A window is left when another window of the desk, or another program, has the focus; a message, a chooser or a dialog
// in front of it does not count. It becomes active when it is opened and when it is come back to.
class GridForm : public QDialog {
    Q_OBJECT

public:
    // `module` is the window's name in error reports.
    GridForm(const NotesContext& context, QString module, QWidget* parent);

    // Shows the window in front of its owner until it is closed.
    void ShowModal();
    // Stores what is pending before it closes; stays open when that fails. A window that is unloaded with the program
    // (its property "unloading" is set) asks nothing and always closes.
    void reject() override;

protected:
    bool event(QEvent* event) override;

    // Brings the window up to date. False when it cannot be shown.
    virtual bool Form_Activate() = 0;
    virtual void Form_LostFocus() {}
    virtual BoundGrid& Grid() = 0;

    // A row of an explanation and buttons, and the grid below it.
    void LayOut(QLabel* Label1, std::initializer_list<QWidget*> buttons);
    // The end of every constructor: texts, size and place. The grid then takes what is left of the window.
    void Form_Load(QSize size);
    // Runs the window's step of becoming active, with the hourglass; false when it failed.
    bool Activate(const std::function<void()>& work);
    void PrintSelection();

    const NotesContext& Context() const { return context_; }
    Steps MakeSteps(const QString& procedure) const;
    static QPushButton* MakeButton(const QString& name, const QString& text);
    QToolButton* MakePrintPicture();

private:
    void Activation_Changed();
    bool IsOwnWindowInFront() const;

    const NotesContext context_;
    QString module_;
    // Another window of the desk, or another program, was gone to.
    bool left_ = false;
};

} // namespace velmora
