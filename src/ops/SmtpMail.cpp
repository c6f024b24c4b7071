#include "ops/SmtpMail.h"

#include "base/Translate.h"
#include "data/IniEntry.h"
#include "platform/mail/OutgoingMail.h"

#include <QUuid>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

QString PasswordKey(const mail::SmtpServer& server) {
    return u"Password for %1 at %2"_s.arg(server.user, server.host);
}

// What must be set, and where, before mail can be sent; for people.
QString NotConfigured() {
    return Translate(
               u"No mail server is set up on this computer. Mail can be sent once %1 has a section [Mail] with the "
               "keys Server and Sender, and where the server asks for them Port, Security and User."_s)
        .arg(ProfilePath(u"Velmora.INI"_s));
}

// The password kept for the user of that server, in the store that only the person at the desk can read; none when
// there is none.
std::optional<QString> StoredPassword(const mail::SmtpServer& server) {
    return CurrentProgram().services().userSettings.Read(u"Velmora"_s, u"Mail"_s, PasswordKey(server));
}

void StorePassword(const mail::SmtpServer& server, const QString& password) {
    CurrentProgram().services().userSettings.Write(u"Velmora"_s, u"Mail"_s, PasswordKey(server), password);
}

class SmtpMessage : public MailMessage {
public:
    explicit SmtpMessage(SmtpMailSession& session) : session_(session) {}
    void Compose() override {
        draft_ = {};
        recipients_.clear();
    }
    void SetNoteText(const QString& text) override { draft_.text = text; }
    void SetSubject(const QString& subject) override { draft_.subject = subject; }
    void AddRecipient(const MailRecipient& recipient) override { recipients_.push_back(recipient); }
    void Send(MailDialog dialog) override {
        MailDraft draft = draft_;
        draft.recipients = mail::RecipientList(recipients_);
        if (dialog == MailDialog::Show && session_.Windows() != nullptr) {
            session_.Windows()->Compose(
                draft, session_.Obstacle(),
                [this](const MailDraft& edited, const std::function<bool()>& goOn) { session_.SendNow(edited, goOn); });
            return;
        }
        session_.SendNow(draft, [this] {
            session_.TheServices().eventLoop.ProcessPendingEvents();
            return true;
        });
    }

private:
    SmtpMailSession& session_;
    MailDraft draft_;
    std::vector<MailRecipient> recipients_;
};

} // namespace

void SmtpMailSession::SignOn() {
    configuration_ = ReadMailConfiguration();
}

std::unique_ptr<MailMessage> SmtpMailSession::NewMessage() {
    return std::make_unique<SmtpMessage>(*this);
}

QString SmtpMailSession::Obstacle() const {
    return configuration_.server.host.isEmpty() ? NotConfigured() : QString();
}

bool SmtpMailSession::FetchPassword(bool refused) {
    mail::SmtpServer& server = configuration_.server;
    if (!refused) {
        if (const auto stored = StoredPassword(server)) {
            server.password = *stored;
            return true;
        }
        if (windows_ == nullptr) {
            throw ProgramError(
                ErrorNumber::Unavailable,
                Translate(u"No password is kept for \"%1\" at %2. Send one message from the desk and let "
                          "it remember the password."_s)
                    .arg(server.user, server.host));
        }
    }
    const auto answer = windows_ != nullptr ? windows_->AskPassword(server, refused) : std::nullopt;
    if (!answer) {
        return false;
    }
    server.password = answer->password;
    remember_ = answer->remember;
    return true;
}

void SmtpMailSession::SendNow(const MailDraft& draft, const std::function<bool()>& goOn) {
    if (const QString obstacle = Obstacle(); !obstacle.isEmpty()) {
        throw ProgramError(ErrorNumber::Unavailable, obstacle);
    }
    mail::OutgoingMail message;
    message.sender = configuration_.sender;
    message.recipients = mail::ParseRecipients(draft.recipients);
    if (message.recipients.empty()) {
        throw ProgramError(ErrorNumber::TypeMismatch, Translate(u"The message is addressed to nobody"_s));
    }
    message.subject = draft.subject;
    message.text = draft.text;
    message.sent = QDateTime::currentDateTime();
    message.id = QUuid::createUuid().toByteArray(QUuid::WithoutBraces);

    mail::SmtpServer& server = configuration_.server;
    if (!server.user.isEmpty() && server.password.isEmpty() && !FetchPassword(false)) {
        throw mail::SmtpError(mail::SmtpFailure::Cancelled,
                              Translate(u"Without the password the message was not sent."_s));
    }
    for (;;) {
        try {
            mail::SendBySmtp(server, message, goOn);
            break;
        } catch (const mail::SmtpError& error) {
            if (error.Failure() != mail::SmtpFailure::Login || !FetchPassword(true)) {
                throw;
            }
        }
    }
    if (std::exchange(remember_, false)) {
        StorePassword(server, server.password);
    }
}

} // namespace velmora
