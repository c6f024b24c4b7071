#pragma once

#include "base/Error.h"
#include "platform/mail/OutgoingMail.h"

#include <functional>

namespace velmora::mail {

// How the connection is protected: not at all, by STARTTLS on a plain connection, or by TLS from the first byte.
enum class Security { None, StartTls, Tls };

struct SmtpServer {
    // Host name or address.
    QString host;
    // 1 to 65535.
    int port = 587;
    Security security = Security::StartTls;
    // Without a user there is no login.
    QString user;
    QString password;
    // Certificates that are trusted, as a PEM file in native form; empty means the system's.
    QString certificates;
};

// What went wrong, as far as the person at the desk can do something about it.
enum class SmtpFailure { Connection, Certificate, Login, Recipient, Cancelled, Other };

// Carries the server's last refusal, in its own words, behind the sentence.
class SmtpError : public Error {
public:
    SmtpError(SmtpFailure failure, const QString& description)
        : Error(static_cast<int>(ErrorNumber::Unavailable), description, QStringLiteral("Mail")), failure_(failure) {}
    SmtpFailure Failure() const { return failure_; }

private:
    SmtpFailure failure_;
};

// Hands the message to the server; returns when the server has taken it for every recipient. When one recipient is
// refused, nobody gets it. Certificates are verified; a server that does not offer the protection asked for is
// refused. `goOn` is asked at least ten times a second and ends the attempt by answering false. Gives up on a server
// that does not answer within 30 seconds. Throws SmtpError.
void SendBySmtp(const SmtpServer& server, const OutgoingMail& mail, const std::function<bool()>& goOn);

} // namespace velmora::mail
