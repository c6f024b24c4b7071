// What the preview can do: the buttons of its toolbar, and the commands of its context menu, each with its key.
#include "base/Translate.h"
#include "base/windows/Glyph.h"
#include "print/windows/PageView.h"
#include "print/windows/PreviewBars.h"
#include "print/windows/frmPrintPreview.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include <array>

namespace velmora::print {

using namespace Qt::StringLiterals;
using Fit = PageView::Fit;

namespace {

struct ButtonRow {
    const char16_t* key; // empty: a separator
    const char16_t* tip = u"";
    Glyph glyph = Glyph::First;
};

constexpr std::array buttons = {
    ButtonRow{u"First", u"First Page", Glyph::First},
    ButtonRow{u"Previous", u"Previous Page", Glyph::Previous},
    ButtonRow{u""},
    ButtonRow{u"Next", u"Next Page", Glyph::Next},
    ButtonRow{u"Last", u"Last Page", Glyph::Last},
    ButtonRow{u""},
    ButtonRow{u"PrintPage", u"Print the Current Page", Glyph::PrintPage},
    ButtonRow{u"Print", u"Print All Pages", Glyph::PrintAll},
};

} // namespace

void frmPrintPreview::AddButtons() {
    Toolbar1->setObjectName(u"Toolbar1"_s);
    Toolbar1->setMovable(false);
    Toolbar1->setIconSize(QSize(20, 20));
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ButtonRow& row : buttons) {
        const QString key = QString::fromUtf16(row.key);
        if (key.isEmpty()) {
            Toolbar1->addSeparator();
            continue;
        }
        const QString tip = Translate(QString::fromUtf16(row.tip));
        QAction* action = Toolbar1->addAction(GlyphIcon(row.glyph), tip);
        action->setObjectName(key);
        action->setToolTip(tip);
        auto* button = qobject_cast<QToolButton*>(Toolbar1->widgetForAction(action));
        button->setObjectName(key);
        button->setAccessibleName(tip);
        button->setFocusPolicy(Qt::TabFocus);
        connect(action, &QAction::triggered, this, [this, key] { Toolbar1_ButtonClick(key); });
    }
    // Every button stays in sight, whatever the notice says.
    Toolbar1->setMinimumWidth(Toolbar1->sizeHint().width());
}

struct frmPrintPreview::Command {
    const char16_t* name; // empty: a separator
    const char16_t* text = u"";
    std::optional<Glyph> glyph = {};
    const char16_t* keys = u""; // separated by semicolons
    void (*run)(frmPrintPreview& window) = nullptr;
};

void frmPrintPreview::AddCommands() {
    using W = frmPrintPreview;
    const std::array commands = {
        Command{u"ZoomIn", u"Zoom &In", Glyph::ZoomIn, u"Ctrl++; Ctrl+=", [](W& window) { window.picPage->ZoomIn(); }},
        Command{u"ZoomOut", u"Zoom &Out", Glyph::ZoomOut, u"Ctrl+-", [](W& window) { window.picPage->ZoomOut(); }},
        Command{u"TrueSize", u"&True Size", {}, u"Ctrl+0", [](W& window) { window.picPage->SetZoom(1); }},
        Command{u"FitPage", u"Fit &Page", Glyph::FitPage, u"Ctrl+1",
                [](W& window) { window.picPage->SetFit(Fit::Page); }},
        Command{u"FitWidth", u"Fit &Width", Glyph::FitWidth, u"Ctrl+2",
                [](W& window) { window.picPage->SetFit(Fit::Width); }},
        Command{u""},
        Command{u"FirstPage", u"F&irst Page", Glyph::First, u"Ctrl+Home", [](W& window) { window.GoToPage(1); }},
        Command{u"LastPage", u"&Last Page", Glyph::Last, u"Ctrl+End",
                [](W& window) { window.GoToPage(window.PageCount()); }},
        Command{u"GoTo", u"&Go to Page...", {}, u"Ctrl+G", [](W& window) { window.OpenGoTo(); }},
        Command{u""},
        Command{u"Find", u"&Find...", Glyph::Find, u"Ctrl+F", [](W& window) { window.OpenFind(); }},
        Command{u"FindNext", u"Find &Next", Glyph::Down, u"F3", [](W& window) { window.findBar_->FindNext(); }},
        Command{u"FindPrevious", u"Find P&revious", Glyph::Up, u"Shift+F3",
                [](W& window) { window.findBar_->FindPrevious(); }},
        Command{u""},
        Command{u"CopyText", u"&Copy Page Text", Glyph::Copy, u"Ctrl+C", [](W& window) { window.CopyText(); }},
        Command{u"SavePdf", u"&Save as PDF...", Glyph::Save, u"Ctrl+S", [](W& window) { window.SavePdf(); }},
        Command{u"PrintAll", u"Print &All Pages", Glyph::PrintAll, u"Ctrl+P",
                [](W& window) { window.Toolbar1_ButtonClick(u"Print"_s); }},
        Command{u""},
        Command{u"CloseWindow", u"Clos&e", Glyph::Close, u"Ctrl+W", [](W& window) { window.close(); }},
    };
    for (const Command& command : commands) {
        AddCommand(command);
    }
}

void frmPrintPreview::AddCommand(const Command& command) {
    if (command.run == nullptr) {
        menu_->addSeparator();
        return;
    }
    auto* action = new QAction(Translate(QString::fromUtf16(command.text)), this);
    action->setObjectName(QString::fromUtf16(command.name));
    if (command.glyph) {
        action->setIcon(GlyphIcon(*command.glyph));
    }
    action->setShortcuts(QKeySequence::listFromString(QString::fromUtf16(command.keys)));
    connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
    // Keys reach the window through its actions, the menu shows them.
    addAction(action);
    menu_->addAction(action);
}

} // namespace velmora::print
