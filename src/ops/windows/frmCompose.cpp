#include "ops/windows/frmCompose.h"

#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "print/ReportFile.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>

namespace velmora {

using namespace Qt::StringLiterals;

frmCompose::frmCompose(const Services& services, const MailDraft& draft, const QString& obstacle,
                       MailWindows::SendDraft send, QWidget* parent)
    : QDialog(parent), services_(services), send_(std::move(send)), txtTo(new QLineEdit(draft.recipients)),
      txtSubject(new QLineEdit(draft.subject)), txtText(new QPlainTextEdit(draft.text)), lblState(new QLabel),
      cmdSend(new QPushButton(u"&Send"_s)), cmdSave(new QPushButton(u"Save &Text..."_s)),
      cmdCancel(new QPushButton(u"Cancel"_s)) {
    setObjectName(u"frmCompose"_s);
    setWindowTitle(u"Send Mail"_s);
    txtTo->setObjectName(u"txtTo"_s);
    txtTo->setPlaceholderText(Translate(u"name@host, several separated by commas"_s));
    txtSubject->setObjectName(u"txtSubject"_s);
    txtText->setObjectName(u"txtText"_s);
    txtText->setTabChangesFocus(true);
    txtText->setTabStopDistance(fontMetrics().averageCharWidth() * 16);
    lblState->setObjectName(u"lblState"_s);
    lblState->setWordWrap(true);
    lblState->setTextFormat(Qt::PlainText);
    lblState->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblState->hide();

    auto* form = new QFormLayout;
    form->setHorizontalSpacing(spacing::large);
    form->setVerticalSpacing(spacing::normal);
    form->addRow(u"T&o"_s, txtTo);
    form->addRow(u"S&ubject"_s, txtSubject);
    auto* caption = new QLabel(u"T&ext"_s);
    caption->setBuddy(txtText);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::normal);
    column->addLayout(form);
    column->addWidget(caption);
    column->addWidget(txtText, 1);
    column->addWidget(lblState);
    column->addSpacing(spacing::normal);
    column->addWidget(MakeButtons());
    TranslateForm(*this);
    if (!obstacle.isEmpty()) {
        cmdSend->setEnabled(false);
        cmdSave->setDefault(true);
        ShowState(obstacle, true);
    }
    resize(720, 560);
    CenterForm(*this);
}

QWidget* frmCompose::MakeButtons() {
    auto* row = new QWidget;
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(spacing::normal);
    buttons->addWidget(cmdSave);
    buttons->addStretch();
    buttons->addWidget(cmdSend);
    buttons->addWidget(cmdCancel);
    cmdSend->setObjectName(u"cmdSend"_s);
    cmdSend->setDefault(true);
    cmdSave->setObjectName(u"cmdSave"_s);
    cmdSave->setAutoDefault(false);
    cmdCancel->setObjectName(u"cmdCancel"_s);
    cmdCancel->setAutoDefault(false);
    connect(cmdSend, &QPushButton::clicked, this, &frmCompose::cmdSend_Click);
    connect(cmdSave, &QPushButton::clicked, this, &frmCompose::cmdSave_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmCompose::reject);
    return row;
}

MailDraft frmCompose::Draft() const {
    return {txtTo->text(), txtSubject->text(), txtText->toPlainText()};
}

void frmCompose::ShowState(const QString& text, bool warning) {
    QPalette colours = palette();
    if (warning) {
        colours.setColor(QPalette::WindowText, WarningColour(colours));
    }
    lblState->setPalette(colours);
    lblState->setText(warning ? u"\u26a0 "_s + text : text);
    lblState->show();
}

void frmCompose::ShowSending(bool sending) {
    sending_ = sending;
    stopRequested_ = false;
    if (sending) {
        focusBefore_ = focusWidget();
    }
    for (QWidget* each :
         {static_cast<QWidget*>(txtTo), static_cast<QWidget*>(txtSubject), static_cast<QWidget*>(txtText),
          static_cast<QWidget*>(cmdSend), static_cast<QWidget*>(cmdSave)}) {
        each->setEnabled(!sending);
    }
    cmdCancel->setText(Translate(sending ? u"Stop Sending"_s : u"Cancel"_s));
    if (!sending && focusBefore_ != nullptr) {
        // Not on the button that drops the message.
        focusBefore_->setFocus();
    }
}

void frmCompose::cmdSend_Click() {
    if (txtTo->text().trimmed().isEmpty()) {
        ShowState(Translate(u"Enter at least one mail address in the field \"To\"."_s), true);
        txtTo->setFocus();
        return;
    }
    ShowSending(true);
    ShowState(Translate(u"The message is being sent."_s), false);
    try {
        const auto ready = qScopeGuard([this] { ShowSending(false); });
        send_(Draft(), [this] {
            services_.eventLoop.ProcessPendingEvents();
            return !stopRequested_;
        });
    } catch (const std::exception&) {
        const Error error = CurrentError();
        services_.log.Write(u"Mail: "_s + error.Description());
        ShowState(error.Description(), true);
        return;
    }
    accept();
}

void frmCompose::cmdSave_Click() {
    try {
        if (const auto path = print::AskReportPath(services_.dialogs, print::ReportFileKind::PlainText)) {
            print::WriteReportFile(*path, txtText->toPlainText().toUtf8(), print::ReportFileKind::PlainText);
            ShowState(Translate(u"The text is saved in %1"_s).arg(*path), false);
        }
    } catch (const std::exception&) {
        ShowState(CurrentError().Description(), true);
    }
}

void frmCompose::reject() {
    if (sending_) {
        stopRequested_ = true;
        return;
    }
    QDialog::reject();
}

frmPassword::frmPassword(const mail::SmtpServer& server, bool refused, QWidget* parent)
    : QDialog(parent), txtPassword(new QLineEdit), chkRemember(new QCheckBox(u"&Remember the password"_s)) {
    setObjectName(u"frmPassword"_s);
    setWindowTitle(u"Mail Password"_s);
    txtPassword->setObjectName(u"txtPassword"_s);
    txtPassword->setEchoMode(QLineEdit::Password);
    txtPassword->setMinimumWidth(260);
    chkRemember->setObjectName(u"chkRemember"_s);

    const QString question = refused ? u"The mail server %1 did not take the password. Enter it again."_s
                                     : u"The mail server %1 asks for a password."_s;
    auto* text = new QLabel(Translate(question).arg(server.host));
    text->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout;
    form->setHorizontalSpacing(spacing::large);
    form->setVerticalSpacing(spacing::normal);
    auto* user = new QLabel(server.user);
    user->setTextFormat(Qt::PlainText);
    form->addRow(u"User"_s, user);
    form->addRow(u"&Password"_s, txtPassword);
    form->addRow(QString(), chkRemember);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::large);
    column->addWidget(text);
    column->addLayout(form);
    column->addStretch();
    column->addWidget(buttons);
    TranslateForm(*this);
    adjustSize();
    CenterForm(*this);
}

PasswordAnswer frmPassword::Result() const {
    return {txtPassword->text(), chkRemember->isChecked()};
}

} // namespace velmora
