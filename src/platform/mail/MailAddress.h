#pragma once

#include "base/services/Mail.h"

#include <QByteArray>

#include <vector>

namespace velmora::mail {

// Throws Error, naming it, for an address that is not of the form name@host or that mail servers do not take. Letters
// beyond ASCII are taken in the host alone.
void CheckAddress(const QString& address);

// The address as servers want it: the host in its ASCII form.
QByteArray WireAddress(const QString& address);

// Reads a list as people type it: addresses, or names with addresses in angle brackets, separated by commas,
// semicolons or line ends; a name may stand in double quotes. Empty entries are passed over. Throws as CheckAddress.
std::vector<MailRecipient> ParseRecipients(const QString& list);

// The same list for people to edit.
QString RecipientList(const std::vector<MailRecipient>& recipients);

} // namespace velmora::mail
