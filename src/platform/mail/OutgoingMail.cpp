#include "platform/mail/OutgoingMail.h"

#include "base/Error.h"
#include "base/Translate.h"

#include <QRegularExpression>
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
    const QRegularExpression entry(u"(\"[^\"]*\"?|<[^>]*>?|[^\"<,;\\r\\n])+"_s);
    QStringList entries;
    for (auto matches = entry.globalMatch(list); matches.hasNext();) {
        entries += matches.next().captured();
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

constexpr qsizetype lineLimit = 76;
// Bytes of text in one encoded word: behind the header's name, "=?UTF-8?B?", their base64 and "?=" fit on a line.
constexpr qsizetype wordBytes = 39;

QString OneLine(const QString& text) {
    QString line = text;
    for (QChar& each : line) {
        if (each.category() == QChar::Other_Control || each == QChar::LineSeparator ||
            each == QChar::ParagraphSeparator) {
            each = u' ';
        }
    }
    return line.trimmed();
}

bool IsPlain(const QString& text) {
    const auto plain = [](QChar each) { return each >= u' ' && each <= u'~'; };
    return std::all_of(text.begin(), text.end(), plain) && !text.contains(QStringLiteral("=?"));
}

// Splits between characters, never inside one.
QByteArrayList EncodedWords(const QString& text) {
    QByteArrayList words;
    QByteArray chunk;
    const auto flush = [&] {
        if (!chunk.isEmpty()) {
            words += "=?UTF-8?B?" + chunk.toBase64() + "?=";
            chunk.clear();
        }
    };
    for (const char32_t character : text.toUcs4()) {
        const QByteArray bytes = QString::fromUcs4(&character, 1).toUtf8();
        if (chunk.size() + bytes.size() > wordBytes) {
            flush();
        }
        chunk += bytes;
    }
    flush();
    return words;
}

// The header's pieces on as few lines as they fit, folded between pieces.
QByteArray Header(const QByteArray& name, const QByteArrayList& pieces) {
    QByteArray header = name + ':';
    qsizetype length = header.size();
    for (const QByteArray& piece : pieces) {
        const bool first = &piece == &pieces.front();
        if (!first && length + 1 + piece.size() > lineLimit) {
            header += "\r\n";
            length = 0;
        }
        header += ' ' + piece;
        length += 1 + piece.size();
    }
    return header + "\r\n";
}

QByteArrayList SubjectPieces(const QString& subject) {
    const QString line = OneLine(subject);
    if (!IsPlain(line)) {
        return EncodedWords(line);
    }
    const QByteArrayList words = line.toLatin1().split(' ');
    // Folding breaks at blanks; a run of blanks, or a word that no line holds, is safer encoded.
    const bool folds = std::none_of(words.begin(), words.end(),
                                    [](const QByteArray& word) { return word.isEmpty() || word.size() > 60; });
    return folds || line.isEmpty() ? words : EncodedWords(line);
}

QByteArray QuotedName(const QString& name) {
    QByteArray quoted = name.toLatin1();
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + quoted + '"';
}

// The pieces of one mailbox; the last ends in `after`.
QByteArrayList MailboxPieces(const MailRecipient& recipient, const QByteArray& after) {
    QByteArrayList pieces;
    const QString name = OneLine(recipient.name);
    if (!name.isEmpty()) {
        if (IsPlain(name) && name.size() <= 60) {
            pieces += QuotedName(name);
        } else {
            pieces += EncodedWords(name);
        }
    }
    pieces += '<' + WireAddress(recipient.address) + '>' + after;
    return pieces;
}

QByteArrayList MailboxesPieces(const std::vector<MailRecipient>& recipients) {
    QByteArrayList pieces;
    for (const MailRecipient& each : recipients) {
        pieces += MailboxPieces(each, &each == &recipients.back() ? QByteArray() : QByteArray(","));
    }
    return pieces;
}

QByteArray Escaped(unsigned char byte) {
    return '=' + QByteArray(1, static_cast<char>(byte)).toHex().toUpper();
}

// One line of text as lines of quoted-printable, ended by CR LF.
void AppendQuotedLine(QByteArray& out, const QByteArray& line) {
    qsizetype length = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        const bool last = i + 1 == line.size();
        const bool blank = byte == ' ' || byte == '\t';
        const bool plain = byte >= '!' && byte <= '~' && byte != '=';
        const QByteArray piece = plain || (blank && !last) ? QByteArray(1, line[i]) : Escaped(byte);
        if (length + piece.size() > lineLimit - 1) {
            out += "=\r\n";
            length = 0;
        }
        out += piece;
        length += piece.size();
    }
    out += "\r\n";
}

QByteArray QuotedPrintable(const QString& text) {
    QByteArray bytes = text.toUtf8();
    bytes.replace("\r\n", "\n").replace('\r', '\n');
    if (bytes.endsWith('\n')) {
        bytes.chop(1);
    }
    QByteArray quoted;
    quoted.reserve(bytes.size() + bytes.size() / 8);
    for (const QByteArray& line : bytes.split('\n')) {
        AppendQuotedLine(quoted, line);
    }
    return quoted;
}

} // namespace

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

QByteArray ComposeMessage(const OutgoingMail& mail) {
    const QByteArray sender = WireAddress(mail.sender.address);
    QByteArray message =
        Header("Date", {mail.sent.toOffsetFromUtc(mail.sent.offsetFromUtc()).toString(Qt::RFC2822Date).toLatin1()});
    message += Header("From", MailboxPieces(mail.sender, {}));
    message += Header("To", MailboxesPieces(mail.recipients));
    message += Header("Subject", SubjectPieces(mail.subject));
    message += Header("Message-ID", {'<' + mail.id + sender.mid(sender.lastIndexOf('@')) + '>'});
    message += "MIME-Version: 1.0\r\n"
               "Content-Type: text/plain; charset=UTF-8\r\n"
               "Content-Transfer-Encoding: quoted-printable\r\n"
               "\r\n";
    return message + QuotedPrintable(mail.text);
}

} // namespace velmora::mail
