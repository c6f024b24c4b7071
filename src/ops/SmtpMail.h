#pragma once

#include "base/Program.h"
#include "ops/MailConfiguration.h"

#include <functional>

namespace velmora {

// A message as a person writes it.
struct MailDraft {
    // A list as people type it.
    QString recipients;
    QString subject;
    QString text;
};

struct PasswordAnswer {
    QString password;
    bool remember = false;
};

// The windows that mail needs. A program without windows has none.
class MailWindows {
public:
    virtual ~MailWindows() = default;
    // Sends a draft; `goOn` answering false ends the attempt. Throws Error.
    using SendDraft = std::function<void(const MailDraft& draft, const std::function<bool()>& goOn)>;
    // Lets the person complete and send the draft; returns when it was sent or given up. `obstacle`, when it is not
    // empty, says why nothing can be sent.
    virtual void Compose(const MailDraft& draft, const QString& obstacle, const SendDraft& send) = 0;
    // None when the person gives up.
    virtual std::optional<PasswordAnswer> AskPassword(const mail::SmtpServer& server, bool refused) = 0;
};

// Mail by the server that ReadMailConfiguration names. Services and windows outlive the session.
class SmtpMailSession : public MailSession {
public:
    // Without windows a message is sent without a dialog, or not at all.
    explicit SmtpMailSession(const Services& services, MailWindows* windows = nullptr)
        : services_(services), windows_(windows) {}

    // Reads the configuration. Throws Error for one that cannot be used; none at all is found out when sending.
    void SignOn() override;
    std::unique_ptr<MailMessage> NewMessage() override;

    // Sends the draft now, asking for a password where one is needed. Throws Error.
    void SendNow(const MailDraft& draft, const std::function<bool()>& goOn);
    // Why nothing can be sent at all; empty when nothing is in the way.
    QString Obstacle() const;
    MailWindows* Windows() const { return windows_; }
    const Services& TheServices() const { return services_; }

private:
    // The password for the next attempt; false when the person gives up.
    bool FetchPassword(bool refused);

    const Services& services_;
    MailWindows* windows_;
    MailConfiguration configuration_;
    bool remember_ = false;
};

} // namespace velmora
