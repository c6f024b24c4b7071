#include "platform/mail/MailAddress.h"

#include "base/Error.h"
#include "base/Translate.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace velmora::mail {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void Refuse(const QString& address, const QString& reason) {
    throw ProgramError(ErrorNumber::TypeMismatch,
                       Translate(u"\"%1\" is no mail address that can be used: %2"_s).arg(address, reason));
}

bool IsUnfit(QChar each) {
    return each <= u' ' || each == QChar(0x7f) || each.category() == QChar::Other_Control || each.isSpace() ||
           u"<>()[]\\,;:\""_s.contains(each);
}

// The entries between separators that stand outside double quotes and angle brackets.
QStringList Entries(const QString& list) {
    QStringList entries(1);
    bool quoted = false;
    bool bracketed = false;
    for (const QChar each : list) {
        if (each == u'"') {
            quoted = !quoted;
        } else if (!quoted && (each == u'<' || each == u'>')) {
            bracketed = each == u'<';
        }
        const bool separates = each == u',' || each == u';' || each == u'\n' || each == u'\r';
        if (separates && !quoted && !bracketed) {
            entries.emplace_back();
        } else {
            entries.back() += each;
        }
    }
    return entries;
}

MailRecipient ParseEntry(const QString& entry) {
    const qsizetype open = entry.lastIndexOf(u'<');
    if (open < 0) {
        return {entry, {}};
    }
    if (!entry.endsWith(u'>')) {
        Refuse(entry, Translate(u"the closing \">\" is missing"_s));
    }
    QString name = entry.left(open).trimmed();
    if (name.size() >= 2 && name.startsWith(u'"') && name.endsWith(u'"')) {
        name = name.mid(1, name.size() - 2);
    }
    return {entry.mid(open + 1, entry.size() - open - 2).trimmed(), name};
}

} // namespace

void CheckAddress(const QString& address) {
    const qsizetype at = address.lastIndexOf(u'@');
    if (at <= 0 || at + 1 == address.size()) {
        Refuse(address, Translate(u"it must read name@host"_s));
    }
    if (std::any_of(address.begin(), address.end(), IsUnfit)) {
        Refuse(address, Translate(u"it holds a blank or a character that addresses do not have"_s));
    }
    const QString name = address.left(at);
    if (std::any_of(name.begin(), name.end(), [](QChar each) { return each > QChar(0x7f) || each == u'@'; })) {
        Refuse(address,
               Translate(u"in front of the last \"@\" stand only letters without accents, digits and marks"_s));
    }
    if (QUrl::toAce(address.mid(at + 1)).isEmpty()) {
        Refuse(address, Translate(u"there can be no host of that name"_s));
    }
}

QByteArray WireAddress(const QString& address) {
    const qsizetype at = address.lastIndexOf(u'@');
    return address.left(at + 1).toLatin1() + QUrl::toAce(address.mid(at + 1));
}

std::vector<MailRecipient> ParseRecipients(const QString& list) {
    std::vector<MailRecipient> recipients;
    for (const QString& entry : Entries(list)) {
        if (const QString trimmed = entry.trimmed(); !trimmed.isEmpty()) {
            recipients.push_back(ParseEntry(trimmed));
            CheckAddress(recipients.back().address);
        }
    }
    return recipients;
}

QString RecipientList(const std::vector<MailRecipient>& recipients) {
    QStringList entries;
    for (const MailRecipient& each : recipients) {
        entries += each.name.isEmpty() ? each.address : u"\"%1\" <%2>"_s.arg(each.name, each.address);
    }
    return entries.join(u", "_s);
}

} // namespace velmora::mail
