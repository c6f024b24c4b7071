#include "platform/mail/OutgoingMail.h"
#include "platform/mail/SmtpClient.h"
#include "tests/support/MailServer.h"

#include <QTimeZone>

namespace velmora::mail {
namespace {

using namespace Qt::StringLiterals;

OutgoingMail SampleMail() {
    OutgoingMail mail;
    mail.sender = {u"desk@example.org"_s, u"Service Desk"_s};
    mail.recipients = {{u"ann@example.org"_s, u"Ann \"A\" Lee"_s}, {u"crew@example.org"_s, {}}};
    mail.subject = u"Reservation Starts"_s;
    mail.text = u"Title\tSub\r\n.hidden\r\n..\r\nÄrger = \"5 €\" \r\n"_s + QString(2000, u'x') + u"\r\n"_s;
    mail.sent = QDateTime(QDate(2026, 3, 7), QTime(14, 15), Qt::OffsetFromUTC, 3600);
    mail.id = "0-1";
    return mail;
}

bool Always() {
    return true;
}

SmtpServer Server(const MailServer& server, Security security = Security::None) {
    return {u"127.0.0.1"_s, server.Port(), security, {}, {}, {}};
}

// The failure of sending the sample, or none.
std::optional<SmtpError> Failure(const SmtpServer& server, const OutgoingMail& mail = SampleMail()) {
    try {
        SendBySmtp(server, mail, Always);
        return std::nullopt;
    } catch (const SmtpError& error) {
        return error;
    }
}

// Undoes quoted-printable as any mail program does.
QByteArray Decoded(QByteArray body) {
    body.replace("=\r\n", "");
    QByteArray text;
    for (qsizetype i = 0; i < body.size(); ++i) {
        if (body[i] == '=') {
            text += QByteArray::fromHex(body.mid(i + 1, 2));
            i += 2;
        } else {
            text += body[i];
        }
    }
    return text;
}

TEST(MailAddressTest, ReadsListsAsPeopleTypeThem) {
    const auto list = ParseRecipients(u" ann@x.org; \"Lee, Bo\" <bo@x.org>,\nCrew <crew@x.org>,, "_s);
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].name, u"Lee, Bo"_s);
    EXPECT_EQ(list[2].address, u"crew@x.org"_s);
    EXPECT_EQ(ParseRecipients(RecipientList(list)).size(), 3U);
    EXPECT_EQ(WireAddress(u"a@bücher.example"_s), "a@xn--bcher-kva.example");
    for (const QString& bad : {u"ann"_s, u"@x.org"_s, u"ann@"_s, u"a b@x.org"_s, u"ann@x.org>\r\nBcc: c@x.org"_s,
                               u"änn@x.org"_s, u"Ann <ann@x.org"_s, u"a@b@x.org"_s}) {
        EXPECT_THROW(ParseRecipients(bad), Error) << bad.toStdString();
    }
}

TEST(OutgoingMailTest, NothingInATextBecomesAHeader) {
    OutgoingMail mail = SampleMail();
    mail.subject = u"Hello\r\nBcc: victim@example.org\r\n\r\nbody"_s;
    mail.recipients[0].name = u"Ann\r\nX-Evil: 1"_s;
    const QByteArray message = ComposeMessage(mail);
    const QByteArray head = message.left(message.indexOf("\r\n\r\n"));
    EXPECT_FALSE(head.contains("\r\nBcc:")) << head.constData();
    EXPECT_FALSE(head.contains("\r\nX-Evil:"));
    EXPECT_EQ(head.count("\r\nSubject:"), 1);
}

TEST(OutgoingMailTest, IsReadableByEveryMailProgram) {
    OutgoingMail mail = SampleMail();
    mail.subject = u"Übersicht für März: "_s + u"Ä€𝄞"_s.repeated(30);
    mail.recipients[0].name = u"Łukasz Nowak"_s;
    const QByteArray message = ComposeMessage(mail);
    EXPECT_TRUE(message.startsWith("Date: 07 Mar 2026 14:15:00 +0100\r\n")) << message.left(60).constData();
    EXPECT_TRUE(message.contains("\r\nFrom: \"Service Desk\" <desk@example.org>\r\n"));
    EXPECT_TRUE(message.contains("\r\nMessage-ID: <0-1@example.org>\r\n"));
    for (const QByteArray& line : message.split('\n')) {
        EXPECT_LE(line.size(), 78) << line.constData();
        EXPECT_TRUE(line.isEmpty() || line.endsWith('\r'));
    }
    // The words of the subject, put together again.
    const qsizetype from = message.indexOf("Subject:");
    QByteArray subject = message.mid(from, message.indexOf("Message-ID:") - from);
    QString text;
    for (qsizetype at = subject.indexOf("=?UTF-8?B?"); at >= 0; at = subject.indexOf("=?UTF-8?B?", at + 1)) {
        text +=
            QString::fromUtf8(QByteArray::fromBase64(subject.mid(at + 10, subject.indexOf("?=", at + 10) - at - 10)));
    }
    EXPECT_EQ(text, mail.subject);
    EXPECT_EQ(QString::fromUtf8(Decoded(message.mid(message.indexOf("\r\n\r\n") + 4))), mail.text);
}

TEST(SmtpTest, DeliversToEveryRecipient) {
    const MailServer server;
    SendBySmtp(Server(server), SampleMail(), Always);
    const QByteArrayList messages = server.Messages();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(
        messages[0].startsWith("MAIL FROM:<desk@example.org>\nRCPT TO:<ann@example.org>\nRCPT TO:<crew@example.org>\n"))
        << messages[0].constData();
    // Leading dots, a long line and other letters arrive as they were written.
    EXPECT_EQ(QString::fromUtf8(Decoded(messages[0].mid(messages[0].indexOf("\r\n\r\n") + 4))), SampleMail().text);
}

TEST(SmtpTest, ProtectsTheConnection) {
    const TestCertificate certificate;
    for (const Security security : {Security::StartTls, Security::Tls}) {
        const MailServer server({security == Security::Tls ? u"--tls"_s : u"--starttls"_s, u"--certificate"_s,
                                 certificate.Path(), u"--login"_s, u"desk:s3cret"_s});
        SmtpServer settings = Server(server, security);
        settings.user = u"desk"_s;
        settings.password = u"s3cret"_s;
        auto failure = Failure(settings);
        ASSERT_TRUE(failure) << "took a certificate that nobody vouches for";
        EXPECT_EQ(failure->Failure(), SmtpFailure::Certificate) << failure->what();
        EXPECT_TRUE(server.Messages().isEmpty());

        settings.certificates = certificate.Path();
        failure = Failure(settings);
        EXPECT_FALSE(failure) << failure->what();
        EXPECT_EQ(server.Messages().size(), 1);

        settings.password = u"guess"_s;
        failure = Failure(settings);
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->Failure(), SmtpFailure::Login);
        EXPECT_TRUE(failure->Description().contains(u"535 5.7.8 wrong user or password, says the test server"_s))
            << failure->what();
    }
}

TEST(SmtpTest, RefusesAServerThatOffersNoProtection) {
    const MailServer server;
    const auto failure = Failure(Server(server, Security::StartTls));
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Failure(), SmtpFailure::Certificate) << failure->what();
    EXPECT_TRUE(server.Messages().isEmpty());
}

TEST(SmtpTest, TellsTheServersOwnWords) {
    {
        const MailServer server({u"--refuse"_s, u"crew@example.org"_s});
        const auto failure = Failure(Server(server));
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->Failure(), SmtpFailure::Recipient);
        EXPECT_TRUE(failure->Description().contains(u"crew@example.org"_s)) << failure->what();
        EXPECT_TRUE(failure->Description().contains(u"550 5.1.1 nobody of that name lives here"_s));
        EXPECT_TRUE(server.Messages().isEmpty()) << "nobody gets a message that one recipient was refused";
    }
    {
        const MailServer server({u"--refuse-message"_s});
        const auto failure = Failure(Server(server));
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->Failure(), SmtpFailure::Other) << failure->what();
        EXPECT_TRUE(failure->Description().contains(u"552-5.3.4 too \uFFFD[31mmuch 5.3.4 for this server"_s))
            << failure->what();
    }
}

TEST(SmtpTest, TellsABrokenConnection) {
    SmtpServer nobody{u"127.0.0.1"_s, 1, Security::None, {}, {}, {}};
    auto failure = Failure(nobody);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Failure(), SmtpFailure::Connection);
    EXPECT_TRUE(failure->Description().contains(u"127.0.0.1:1"_s)) << failure->what();

    const MailServer dropping({u"--drop"_s});
    failure = Failure(Server(dropping));
    ASSERT_TRUE(failure);

    nobody.host = u"no such host/../x"_s;
    EXPECT_TRUE(Failure(nobody));
}

TEST(SmtpTest, StopsWhenAsked) {
    const MailServer server({u"--silent"_s});
    int asked = 0;
    try {
        SendBySmtp(Server(server), SampleMail(), [&] { return ++asked < 4; });
        FAIL() << "sent to a server that says nothing";
    } catch (const SmtpError& error) {
        EXPECT_EQ(error.Failure(), SmtpFailure::Cancelled);
    }
}

} // namespace
} // namespace velmora::mail
