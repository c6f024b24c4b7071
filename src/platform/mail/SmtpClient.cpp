#include "platform/mail/SmtpClient.h"

#include "base/Translate.h"
#include "platform/mail/OutgoingMail.h"

#include <QUrl>

#include <algorithm>
#include <cstring>
#include <curl/curl.h>
#include <memory>

namespace velmora::mail {

using namespace Qt::StringLiterals;

namespace {

constexpr long connectSeconds = 15;
constexpr long answerSeconds = 30;
constexpr int pollMilliseconds = 50;

template <auto Free>
struct Release {
    template <typename T>
    void operator()(T* owned) const {
        Free(owned);
    }
};
using Transfer = std::unique_ptr<CURL, Release<curl_easy_cleanup>>;
using Transfers = std::unique_ptr<CURLM, Release<curl_multi_cleanup>>;
using List = std::unique_ptr<curl_slist, Release<curl_slist_free_all>>;

// The message as the library asks for it, piece by piece.
struct Upload {
    QByteArray bytes;
    qsizetype sent = 0;

    static size_t Read(char* buffer, size_t size, size_t count, void* self) {
        auto& upload = *static_cast<Upload*>(self);
        const qsizetype piece = std::min(static_cast<qsizetype>(size * count), upload.bytes.size() - upload.sent);
        std::memcpy(buffer, upload.bytes.constData() + upload.sent, static_cast<size_t>(piece));
        upload.sent += piece;
        return static_cast<size_t>(piece);
    }
};

// Keeps the last refusal (a reply of 400 and above) that the server sent. A reply may have several lines.
struct Conversation {
    QByteArray refusal;
    QByteArray recipient;

    static int Note(CURL*, curl_infotype type, char* data, size_t size, void* self) {
        auto& conversation = *static_cast<Conversation*>(self);
        const QByteArray line = QByteArray(data, static_cast<qsizetype>(size)).trimmed();
        if (type == CURLINFO_HEADER_OUT && line.startsWith("RCPT TO:")) {
            conversation.recipient = line.mid(8);
        }
        if (type == CURLINFO_HEADER_IN && line.size() >= 3 && (line[0] == '4' || line[0] == '5')) {
            conversation.NoteRefusal(line);
        }
        return 0;
    }
    void NoteRefusal(const QByteArray& line) {
        // "550-first" continues in "550 last".
        const bool continues = refusal.size() > 3 && lastContinues_ && refusal.left(3) == line.left(3);
        refusal = continues ? refusal + ' ' + line.mid(4) : line;
        lastContinues_ = line.size() > 3 && line[3] == '-';
    }

private:
    bool lastContinues_ = false;
};

QByteArray Url(const SmtpServer& server) {
    QUrl url;
    url.setScheme(server.security == Security::Tls ? u"smtps"_s : u"smtp"_s);
    url.setHost(server.host);
    url.setPort(server.port);
    if (url.host().isEmpty()) {
        throw SmtpError(SmtpFailure::Connection, Translate(u"\"%1\" is no name of a mail server"_s).arg(server.host));
    }
    return url.toEncoded();
}

SmtpFailure Classify(CURLcode code, const Conversation& conversation) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_RECV_ERROR:
        return SmtpFailure::Connection;
    case CURLE_WEIRD_SERVER_REPLY:
        // Also the library's word for a message that is refused behind its text.
        return conversation.refusal.isEmpty() ? SmtpFailure::Connection : SmtpFailure::Other;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_USE_SSL_FAILED:
        return SmtpFailure::Certificate;
    case CURLE_LOGIN_DENIED:
        return SmtpFailure::Login;
    default:
        return conversation.refusal.isEmpty() || conversation.recipient.isEmpty() ? SmtpFailure::Other
                                                                                  : SmtpFailure::Recipient;
    }
}

QString Sentence(SmtpFailure failure, const SmtpServer& server, const Conversation& conversation) {
    const QString place = u"%1:%2"_s.arg(server.host).arg(server.port);
    switch (failure) {
    case SmtpFailure::Connection:
        return Translate(u"The mail server %1 could not be reached."_s).arg(place);
    case SmtpFailure::Certificate:
        return Translate(u"The connection to the mail server %1 could not be protected."_s).arg(place);
    case SmtpFailure::Login:
        return Translate(u"The mail server %1 refused the login of \"%2\"."_s).arg(place, server.user);
    case SmtpFailure::Recipient:
        return Translate(u"The mail server %1 refused the message for %2."_s)
            .arg(place, QString::fromUtf8(conversation.recipient));
    case SmtpFailure::Cancelled:
        return Translate(u"Sending was cancelled; the message was not sent."_s);
    case SmtpFailure::Other:
        break;
    }
    return Translate(u"The mail server %1 did not take the message."_s).arg(place);
}

// The server's words without what a terminal would obey.
QString Printable(const QByteArray& answer) {
    QString text = QString::fromUtf8(answer);
    std::ranges::replace_if(
        text, [](QChar c) { return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format; },
        QChar::ReplacementCharacter);
    return text;
}

[[noreturn]] void Fail(CURLcode code, const char* reason, const SmtpServer& server, const Conversation& conversation) {
    const SmtpFailure failure = Classify(code, conversation);
    QString text = Sentence(failure, server, conversation);
    if (!conversation.refusal.isEmpty()) {
        text += Translate(u" The server said: %1"_s).arg(Printable(conversation.refusal));
    } else {
        text += u" (%1)"_s.arg(QString::fromUtf8(*reason != '\0' ? reason : curl_easy_strerror(code)));
    }
    throw SmtpError(failure, text);
}

void Protect(CURL* transfer, const SmtpServer& server) {
    if (server.security == Security::StartTls) {
        curl_easy_setopt(transfer, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
    }
    curl_easy_setopt(transfer, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (!server.certificates.isEmpty()) {
        curl_easy_setopt(transfer, CURLOPT_CAINFO, server.certificates.toLocal8Bit().constData());
        curl_easy_setopt(transfer, CURLOPT_CAPATH, nullptr);
    }
    if (!server.user.isEmpty()) {
        curl_easy_setopt(transfer, CURLOPT_USERNAME, server.user.toUtf8().constData());
        curl_easy_setopt(transfer, CURLOPT_PASSWORD, server.password.toUtf8().constData());
    }
}

List Envelope(const OutgoingMail& mail) {
    List recipients;
    for (const MailRecipient& each : mail.recipients) {
        const QByteArray address = '<' + WireAddress(each.address) + '>';
        recipients.reset(curl_slist_append(recipients.release(), address.constData()));
    }
    return recipients;
}

// Drives the transfer to its end. False when `goOn` ended it.
bool Run(CURLM* transfers, const std::function<bool()>& goOn, CURLcode& result) {
    int running = 1;
    while (running > 0) {
        curl_multi_perform(transfers, &running);
        if (running > 0) {
            curl_multi_poll(transfers, nullptr, 0, pollMilliseconds, nullptr);
        }
        if (!goOn() && running > 0) {
            return false;
        }
    }
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(transfers, &left);
    result = message != nullptr ? message->data.result : CURLE_FAILED_INIT;
    return true;
}

} // namespace

void SendBySmtp(const SmtpServer& server, const OutgoingMail& mail, const std::function<bool()>& goOn) {
    Upload upload{ComposeMessage(mail)};
    Conversation conversation;
    const List recipients = Envelope(mail);
    char reason[CURL_ERROR_SIZE] = "";
    // The transfers go before what they point into.
    const Transfers transfers(curl_multi_init());
    const Transfer transfer(curl_easy_init());
    CURL* const easy = transfer.get();
    curl_easy_setopt(easy, CURLOPT_URL, Url(server).constData());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    curl_easy_setopt(easy, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl_easy_setopt(easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, answerSeconds);
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, reason);
    curl_easy_setopt(easy, CURLOPT_VERBOSE, 1L);
    curl_easy_setopt(easy, CURLOPT_DEBUGFUNCTION, &Conversation::Note);
    curl_easy_setopt(easy, CURLOPT_DEBUGDATA, &conversation);
    curl_easy_setopt(easy, CURLOPT_MAIL_FROM, ('<' + WireAddress(mail.sender.address) + '>').constData());
    curl_easy_setopt(easy, CURLOPT_MAIL_RCPT, recipients.get());
    curl_easy_setopt(easy, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(easy, CURLOPT_READFUNCTION, &Upload::Read);
    curl_easy_setopt(easy, CURLOPT_READDATA, &upload);
    Protect(easy, server);

    curl_multi_add_handle(transfers.get(), easy);
    CURLcode result = CURLE_OK;
    const bool finished = Run(transfers.get(), goOn, result);
    curl_multi_remove_handle(transfers.get(), easy);
    if (!finished) {
        throw SmtpError(SmtpFailure::Cancelled, Sentence(SmtpFailure::Cancelled, server, conversation));
    }
    if (result != CURLE_OK) {
        Fail(result, reason, server, conversation);
    }
}

} // namespace velmora::mail
