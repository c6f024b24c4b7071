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
// certificates in place of the system's). The password lies in the per-user store. Throws Error naming key and value
// for a value that cannot be used.
MailConfiguration ReadMailConfiguration();

} // namespace velmora
