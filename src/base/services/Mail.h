#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace velmora {

struct MailRecipient {
    // "name@host", without brackets.
    QString address;
    // May be empty.
    QString name;
    friend bool operator==(const MailRecipient&, const MailRecipient&) = default;
};

enum class MailDialog { Show, Skip };

// One message being composed. Throws Error with the mail server's own words.
class MailMessage {
public:
    virtual ~MailMessage() = default;
    // Starts over with an empty message.
    virtual void Compose() = 0;
    virtual void SetNoteText(const QString& text) = 0;
    virtual void SetSubject(const QString& subject) = 0;
    virtual void AddRecipient(const MailRecipient& recipient) = 0;
    // With the dialog the person may address, change, send or cancel the message; cancelling is not a failure.
    // Returns when the message was handed to the server or cancelled.
    virtual void Send(MailDialog dialog) = 0;
};

// A signed-on connection to the mail system.
class MailSession {
public:
    virtual ~MailSession() = default;
    virtual void SignOn() = 0;
    // Call it after SignOn. The session outlives its messages.
    virtual std::unique_ptr<MailMessage> NewMessage() = 0;
};

// Hands a finished text to the person's mail window and returns when the window is gone.
class MailWindow {
public:
    virtual ~MailWindow() = default;
    virtual void SendText(const QString& text) = 0;
};

} // namespace velmora
