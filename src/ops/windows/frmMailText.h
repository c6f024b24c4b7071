#pragma once

#include "ops/SmtpMail.h"

#include <QDialog>

namespace velmora {

// Sends one text by mail while it is shown: signs on when it is loaded, composes and sends when it becomes active, and
// goes. Services and session outlive it.
class frmMailText : public QDialog {
    Q_OBJECT

public:
    frmMailText(const Services& services, MailSession& session, QWidget* parent = nullptr);
    ~frmMailText() override;
    Q_DISABLE_COPY_MOVE(frmMailText)

    // Set before the window is shown; cleared when the message is sent or given up.
    QString MessageText;
    QString Subject;
    std::vector<MailRecipient> Recipients;
    // Send directly when there are recipients. When that fails, and the failure is ignored, the person goes on in the
    // dialog, so that the text is not lost.
    bool SendWithoutDialog = false;

    // Shows the window and returns when it is gone.
    void ShowModal();

private:
    void Form_Load();
    void Form_Activate();
    MailMessage& Message() const;

    const Services& services_;
    MailSession& session_;
    std::unique_ptr<MailMessage> message_;
};

// The windows that mail needs, in front of the window in use.
class WindowMailWindows : public MailWindows {
public:
    explicit WindowMailWindows(const Services& services) : services_(services) {}
    void Compose(const MailDraft& draft, const QString& obstacle, const SendDraft& send) override;
    std::optional<PasswordAnswer> AskPassword(const mail::SmtpServer& server, bool refused) override;

private:
    const Services& services_;
};

// The mail service of a program with windows. The session signs on at the first text.
class WindowMail : public MailWindow {
public:
    // The program to whose services it belongs is installed before the first text is sent.
    void SendText(const QString& text) override;
};

} // namespace velmora
