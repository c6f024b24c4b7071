#include "ops/MailConfiguration.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/IniEntry.h"
#include "platform/mail/MailAddress.h"

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

QString Setting(const QString& key) {
    return GetConfigValue(u"Velmora"_s, u"Mail"_s, key, {}).trimmed();
}

[[noreturn]] void Refuse(const QString& key, const QString& value, const QString& takes) {
    throw ProgramError(ErrorNumber::TypeMismatch, Translate(u"%1 in section [Mail] of %2 is \"%3\"; it takes %4"_s)
                                                      .arg(key, ProfilePath(u"Velmora.INI"_s), value, takes));
}

mail::Security ReadSecurity() {
    const QString value = Setting(u"Security"_s);
    if (value.isEmpty() || value.compare(u"starttls", Qt::CaseInsensitive) == 0) {
        return mail::Security::StartTls;
    }
    if (value.compare(u"tls", Qt::CaseInsensitive) == 0) {
        return mail::Security::Tls;
    }
    if (value.compare(u"none", Qt::CaseInsensitive) == 0) {
        return mail::Security::None;
    }
    Refuse(u"Security"_s, value, u"starttls, tls or none"_s);
}

int ReadPort(mail::Security security) {
    const QString value = Setting(u"Port"_s);
    if (value.isEmpty()) {
        switch (security) {
        case mail::Security::StartTls:
            return 587;
        case mail::Security::Tls:
            return 465;
        case mail::Security::None:
            return 25;
        }
    }
    bool good = false;
    const int port = value.toInt(&good);
    if (!good || port < 1 || port > 65535) {
        Refuse(u"Port"_s, value, Translate(u"a number from 1 to 65535"_s));
    }
    return port;
}

MailRecipient ReadSender(const QString& user) {
    const QString value = Setting(u"Sender"_s);
    const QString text = value.isEmpty() && user.contains(u'@') ? user : value;
    const auto senders = mail::ParseRecipients(text);
    if (senders.size() != 1) {
        Refuse(u"Sender"_s, value, Translate(u"the one mail address that messages come from"_s));
    }
    return senders.front();
}

QString PasswordKey(const mail::SmtpServer& server) {
    return u"Password for %1 at %2"_s.arg(server.user, server.host);
}

} // namespace

MailConfiguration ReadMailConfiguration() {
    MailConfiguration configuration;
    mail::SmtpServer& server = configuration.server;
    server.host = Setting(u"Server"_s);
    if (server.host.isEmpty()) {
        return configuration;
    }
    server.security = ReadSecurity();
    server.port = ReadPort(server.security);
    server.user = Setting(u"User"_s);
    server.certificates = Setting(u"CAFile"_s);
    configuration.sender = ReadSender(server.user);
    return configuration;
}

QString MailNotConfigured() {
    return Translate(
               u"No mail server is set up on this computer. Mail can be sent once %1 has a section [Mail] with the "
               "keys Server and Sender, and where the server asks for them Port, Security and User."_s)
        .arg(ProfilePath(u"Velmora.INI"_s));
}

std::optional<QString> StoredMailPassword(const mail::SmtpServer& server) {
    return CurrentProgram().services().userSettings.Read(u"Velmora"_s, u"Mail"_s, PasswordKey(server));
}

void StoreMailPassword(const mail::SmtpServer& server, const QString& password) {
    CurrentProgram().services().userSettings.Write(u"Velmora"_s, u"Mail"_s, PasswordKey(server), password);
}

} // namespace velmora
