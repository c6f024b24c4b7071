#pragma once

#include "ops/SmtpMail.h"

namespace velmora {

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
