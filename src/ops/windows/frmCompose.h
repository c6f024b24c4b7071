#pragma once

#include "base/Program.h"
#include "ops/SmtpMail.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace velmora {

// A message to complete and send. It stays open, with all that was written, until the message is sent or given up; a
// failure is shown inside it. The text can be saved as a file.
class frmCompose : public QDialog {
    Q_OBJECT

public:
    // `obstacle`, when it is not empty, says why nothing can be sent. Services outlive the window.
    frmCompose(const Services& services, const MailDraft& draft, const QString& obstacle, MailWindows::SendDraft send,
               QWidget* parent = nullptr);

    void reject() override;

private:
    QWidget* MakeButtons();
    void cmdSend_Click();
    void cmdSave_Click();
    void ShowState(const QString& text, bool warning);
    void ShowSending(bool sending);
    MailDraft Draft() const;

    const Services& services_;
    MailWindows::SendDraft send_;
    bool sending_ = false;
    bool stopRequested_ = false;
    // What had the focus before the message was on its way.
    QWidget* focusBefore_ = nullptr;

    QLineEdit* txtTo;
    QLineEdit* txtSubject;
    QPlainTextEdit* txtText;
    QLabel* lblState;
    QPushButton* cmdSend;
    QPushButton* cmdSave;
    QPushButton* cmdCancel;
};

// Asks for the password of the mail server's user.
class frmPassword : public QDialog {
    Q_OBJECT

public:
    // `refused`: the server did not take the last one.
    frmPassword(const mail::SmtpServer& server, bool refused, QWidget* parent = nullptr);

    PasswordAnswer Result() const;

private:
    QLineEdit* txtPassword;
    QCheckBox* chkRemember;
};

} // namespace velmora
