#pragma once

#include "platform/mail/SmtpClient.h"

namespace velmora {

// The mail settings of this desk: section "Mail" of "Velmora.INI", else the user's own settings of that name.
struct MailConfiguration {
    // An empty host means that no server is configured.
    mail::SmtpServer server;
    MailRecipient sender;
};

// Keys: Server; Port (by default 587 with STARTTLS, 465 with TLS, 25 without protection); Security (starttls, which is
// the default, tls or none); User; Sender (an address or "Name <address>", by default the user); CAFile (trusted
// certificates in place of the system's). The password is not read. Throws Error naming key and value for a value that
// cannot be used.
MailConfiguration ReadMailConfiguration();

// What must be set, and where, before mail can be sent; for people.
QString MailNotConfigured();

// The password kept for the user of that server; none when there is none. It lies in the per-user store, which only the
// user can read.
std::optional<QString> StoredMailPassword(const mail::SmtpServer& server);
void StoreMailPassword(const mail::SmtpServer& server, const QString& password);

} // namespace velmora
