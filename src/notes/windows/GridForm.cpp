#include "notes/windows/GridForm.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "notes/windows/BoundGrid.h"
#include "print/PrintGrid.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

GridForm::GridForm(const NotesContext& context, QString module, QWidget* parent)
    : QDialog(parent), context_(context), module_(std::move(module)) {
    // The owner waits; other windows of the desk, such as previews, do not.
    setWindowModality(parent != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
}

Steps GridForm::MakeSteps(const QString& procedure) const {
    return Steps(context_.program.services().errors, module_, procedure);
}

QPushButton* GridForm::MakeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    // Return belongs to the grid.
    button->setAutoDefault(false);
    return button;
}

QToolButton* GridForm::MakePrintPicture() {
    auto* picture = new QToolButton;
    picture->setObjectName(u"Image1"_s);
    picture->setIcon(GlyphIcon(Glyph::PrintPage));
    picture->setText(u"&Print"_s);
    picture->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    picture->setToolTip(Translate(u"Print the selected rows (Ctrl+P)"_s));
    picture->setFocusPolicy(Qt::StrongFocus);
    picture->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(picture, &QToolButton::clicked, this, &GridForm::PrintSelection);
    auto* shortcut = new QAction(this);
    shortcut->setShortcut(QKeySequence::Print);
    connect(shortcut, &QAction::triggered, this, &GridForm::PrintSelection);
    addAction(shortcut);
    return picture;
}

void GridForm::LayOut(QLabel* Label1, std::initializer_list<QWidget*> buttons) {
    Label1->setObjectName(u"Label1"_s);
    Label1->setWordWrap(true);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(spacing::large, spacing::large, spacing::large, 0);
    head->setSpacing(spacing::normal);
    head->addWidget(Label1, 1);
    for (QWidget* each : buttons) {
        head->addWidget(each);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::normal);
    column->addLayout(head);
    column->addWidget(&Grid(), 1);
}

void GridForm::Form_Load(QSize size) {
    const BusyPointer busy(context_.program.services().eventLoop);
    TranslateForm(*this);
    resize(size.expandedTo(sizeHint()));
    CenterForm(*this);
}

bool GridForm::Activate(const std::function<void()>& work) {
    const BusyPointer busy(context_.program.services().eventLoop);
    return MakeSteps(u"Activate"_s).Step({}, work);
}

void GridForm::ShowModal() {
    left_ = false;
    if (Form_Activate()) {
        Grid().setFocus();
        exec();
    }
}

void GridForm::reject() {
    // The program ends around the window; nobody is there to be asked.
    if (property("unloading").toBool()) {
        Grid().View().StoreUnasked();
        QDialog::reject();
        return;
    }
    if (Grid().View().UpdateRow()) {
        QDialog::reject();
    }
}

void GridForm::PrintSelection() {
    if (Grid().View().UpdateRow()) {
        print::PrintGridSelection(context_.program, context_.job, Grid().ToPrint());
    }
}

bool GridForm::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::WindowActivate) {
        // Which window comes next is known only after the event.
        QMetaObject::invokeMethod(this, &GridForm::Activation_Changed, Qt::QueuedConnection);
    }
    return QDialog::event(event);
}

void GridForm::Activation_Changed() {
    if (!isVisible()) {
        return;
    }
    if (isActiveWindow()) {
        if (std::exchange(left_, false)) {
            Form_Activate();
        }
    } else if (!left_ && !IsOwnWindowInFront()) {
        left_ = true;
        Form_LostFocus();
    }
}

bool GridForm::IsOwnWindowInFront() const {
    const QWidget* modal = QApplication::activeModalWidget();
    if ((modal != nullptr && modal != this) || QApplication::activePopupWidget() != nullptr) {
        return true;
    }
    for (const QWidget* active = QApplication::activeWindow(); active != nullptr; active = active->parentWidget()) {
        if (active == this) {
            return true;
        }
    }
    return false;
}

} // namespace velmora
