#include "ops/MailConfiguration.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/IniEntry.h"
#include "platform/mail/OutgoingMail.h"

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

struct Protection {
    QLatin1StringView name;
    mail::Security security;
    int usualPort;
};

// The first one counts where none is named.
constexpr Protection protections[] = {{"starttls"_L1, mail::Security::StartTls, 587},
                                      {"tls"_L1, mail::Security::Tls, 465},
                                      {"none"_L1, mail::Security::None, 25}};

const Protection& ReadProtection() {
    const QString value = Setting(u"Security"_s);
    for (const Protection& each : protections) {
        if (value.isEmpty() || value.compare(each.name, Qt::CaseInsensitive) == 0) {
            return each;
        }
    }
    Refuse(u"Security"_s, value, u"starttls, tls or none"_s);
}

int ReadPort(int usual) {
    const QString value = Setting(u"Port"_s);
    bool isNumber = false;
    const int port = value.isEmpty() ? usual : value.toInt(&isNumber);
    if (!value.isEmpty() && (!isNumber || port < 1 || port > 65535)) {
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

} // namespace

MailConfiguration ReadMailConfiguration() {
    MailConfiguration configuration;
    mail::SmtpServer& server = configuration.server;
    server.host = Setting(u"Server"_s);
    if (server.host.isEmpty()) {
        return configuration;
    }
    const Protection& protection = ReadProtection();
    server.security = protection.security;
    server.port = ReadPort(protection.usualPort);
    server.user = Setting(u"User"_s);
    server.certificates = Setting(u"CAFile"_s);
    configuration.sender = ReadSender(server.user);
    return configuration;
}

} // namespace velmora
