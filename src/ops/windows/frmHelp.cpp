#include "ops/windows/frmHelp.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Glyph.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"

#include <QApplication>
#include <QFile>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>

namespace velmora {

using namespace Qt::StringLiterals;

frmHelp::frmHelp(const QString& html, QWidget* parent)
    : QWidget(parent, Qt::Window), lstTopics(new QListWidget), txtFind(new QLineEdit), txtHelp(new QTextBrowser),
      lblFound(new QLabel) {
    setObjectName(u"frmHelp"_s);
    setWindowTitle(u"Service Administration Help"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    lstTopics->setObjectName(u"lstTopics"_s);
    lstTopics->setAccessibleName(u"Topics"_s);
    txtFind->setObjectName(u"txtFind"_s);
    txtFind->addAction(GlyphIcon(Glyph::Find), QLineEdit::LeadingPosition);
    txtHelp->setObjectName(u"txtHelp"_s);
    txtHelp->setAccessibleName(u"Help text"_s);
    txtHelp->document()->setDocumentMargin(spacing::large);
    txtHelp->document()->setDefaultStyleSheet(u"h1, h2 { font-weight: bold } h2 { margin-top: 24px } "
                                              "td, th { padding: 2px 12px 2px 0; text-align: left }"_s);
    txtHelp->setHtml(html);
    lblFound->setObjectName(u"lblFound"_s);
    lblFound->setTextFormat(Qt::PlainText);
    lblFound->setWordWrap(true);
    lblFound->hide();
    auto* find = new QLabel(u"&Find"_s);
    find->setBuddy(txtFind);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(spacing::normal, spacing::normal, spacing::normal, spacing::normal);
    grid->setSpacing(spacing::normal);
    grid->addWidget(find, 0, 0);
    grid->addWidget(txtFind, 0, 1);
    grid->addWidget(lblFound, 1, 0, 1, 2);
    grid->addWidget(lstTopics, 2, 0, 1, 2);
    grid->addWidget(txtHelp, 0, 2, 3, 1);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(2, 1);
    ListTopics(html);
    constexpr int listWidth = 220;
    lstTopics->setFixedWidth(listWidth);
    TranslateForm(*this);
    constexpr QSize designed(860, 620);
    resize(designed);
    CenterForm(*this);
    connect(lstTopics, &QListWidget::currentItemChanged, this, &frmHelp::lstTopics_Click);
    connect(txtHelp->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { atTopic_ = false; });
    connect(txtFind, &QLineEdit::textEdited, lblFound, &QWidget::hide);
    connect(txtFind, &QLineEdit::returnPressed, this, &frmHelp::txtFind_Return);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, txtFind, qOverload<>(&QWidget::setFocus));
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &QWidget::close);
}

void frmHelp::ListTopics(const QString& html) {
    const QRegularExpression heading(u"<h2><a name=\"([^\"]+)\">([^<]+)</a></h2>"_s);
    for (auto matches = heading.globalMatch(html); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        auto* item = new QListWidgetItem(match.captured(2), lstTopics);
        item->setData(Qt::UserRole, match.captured(1));
    }
}

void frmHelp::ShowTopic(const QString& key) {
    show();
    int row = 0;
    for (int i = 0; i < lstTopics->count(); ++i) {
        if (lstTopics->item(i)->data(Qt::UserRole).toString() == key) {
            row = i;
        }
    }
    lstTopics->setCurrentRow(row);
    lstTopics_Click();
    raise();
    activateWindow();
}

void frmHelp::lstTopics_Click() {
    if (const QListWidgetItem* item = lstTopics->currentItem()) {
        txtHelp->scrollToAnchor(item->data(Qt::UserRole).toString());
        atTopic_ = true;
    }
}

void frmHelp::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The text breaks into other lines now; a desktop may change the size after the window is shown.
    if (atTopic_) {
        lstTopics_Click();
    }
}

void frmHelp::txtFind_Return() {
    const QString text = txtFind->text();
    if (text.isEmpty()) {
        return;
    }
    const QTextCursor before = txtHelp->textCursor();
    const int place = txtHelp->verticalScrollBar()->value();
    bool found = txtHelp->find(text);
    if (!found) {
        // From the beginning once more.
        txtHelp->moveCursor(QTextCursor::Start);
        found = txtHelp->find(text);
    }
    lblFound->setVisible(!found);
    if (found) {
        atTopic_ = false;
        return;
    }
    txtHelp->setTextCursor(before);
    txtHelp->verticalScrollBar()->setValue(place);
    lblFound->setText(Translate(u"\"%1\" is not in the help."_s).arg(text));
}

namespace {

frmHelp* OpenHelp() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<frmHelp*>(window); help != nullptr && help->isVisible()) {
            return help;
        }
    }
    return nullptr;
}

} // namespace

void ShowHelp(const QString& topic) {
    Program& program = CurrentProgram();
    const QString path = program.Part<HelpFile>().path;
    frmHelp* help = OpenHelp();
    // While a dialog is open, only its child windows can be used.
    QWidget* dialog = QApplication::activeModalWidget();
    if (help != nullptr && dialog != nullptr && help->parentWidget() != dialog) {
        help->close();
        help = nullptr;
    }
    if (help == nullptr) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            program.services().dialogs.ShowMessage(
                {Translate(u"The help file \"%1\" cannot be read: %2. Set the key \"Help\" in section \"Files\" of "
                           "Velmora.INI to its folder."_s)
                     .arg(path, file.errorString()),
                 program.Title(), Buttons::Ok, Icon::Exclamation});
            return;
        }
        help = new frmHelp(QString::fromUtf8(file.readAll()), dialog);
    }
    help->ShowTopic(topic);
}

HelpKey::HelpKey(std::function<QString()> topic) : topic_(std::move(topic)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    // The window itself gets the key before any of its controls.
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
        return false;
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) {
        return false;
    }
    ShowHelp(topic_());
    return true;
}

} // namespace velmora
