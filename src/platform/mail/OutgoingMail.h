#pragma once

#include "base/services/Mail.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

namespace velmora::mail {

// The address as servers want it: the host in its ASCII form.
QByteArray WireAddress(const QString& address);

// Reads a list as people type it: addresses, or names with addresses in angle brackets, separated by commas,
// semicolons or line ends; a name may stand in double quotes. Empty entries are passed over. Throws
// Error that names the address for one that is not of the form name@host or that mail servers do not take: letters
// beyond ASCII are taken in the host alone.
std::vector<MailRecipient> ParseRecipients(const QString& list);

// The same list for people to edit.
QString RecipientList(const std::vector<MailRecipient>& recipients);

// A message on its way to a mail server.
struct OutgoingMail {
    MailRecipient sender;
    std::vector<MailRecipient> recipients;
    QString subject;
    // Lines end in LF or CR LF.
    QString text;
    // A moment in time, not a wall-clock value: the header names the offset from UTC.
    QDateTime sent;
    // The part of the Message-ID before the "@"; letters, digits and hyphens.
    QByteArray id;
};

// The message as it goes over the wire (RFC 5322), without the SMTP dot-stuffing: UTF-8 text as quoted-printable
// (RFC 2045), headers beyond ASCII as encoded words (RFC 2047), lines ended by CR LF and at most 76 characters long
// where no single address is longer. Control characters in subject and names become blanks, so no text can add a
// header. The addresses are such as ParseRecipients takes.
QByteArray ComposeMessage(const OutgoingMail& mail);

} // namespace velmora::mail
