#include "ops/windows/frmMailText.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "ops/windows/frmCompose.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

frmMailText::frmMailText(const Services& services, MailSession& session, QWidget* parent)
    : QDialog(parent), services_(services), session_(session) {
    setObjectName(u"frmMailText"_s);
    setWindowTitle(u"Send Mail"_s);
    auto* text = new QLabel(u"The message is being prepared."_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * spacing::large, spacing::large, 2 * spacing::large, spacing::large);
    column->addWidget(text);
    TranslateForm(*this);
    adjustSize();
    CenterForm(*this);
    Form_Load();
}

frmMailText::~frmMailText() = default;

void frmMailText::ShowModal() {
    QTimer::singleShot(0, this, [this] { Form_Activate(); });
    exec();
}

void frmMailText::Form_Load() {
    Steps steps(services_.errors, u"Mail Text"_s, u"Initializitg"_s);
    steps.Step(u"Signing On"_s, [this] { session_.SignOn(); });
    steps.Step(u"Exchanging Session ID"_s, [this] { message_ = session_.NewMessage(); });
}

MailMessage& frmMailText::Message() const {
    if (message_ == nullptr) {
        throw ProgramError(ErrorNumber::Unavailable, Translate(u"The mail system was not signed on"_s));
    }
    return *message_;
}

void frmMailText::Form_Activate() {
    repaint();
    Steps steps(services_.errors, u"Mail Text"_s, u"Sending"_s);
    steps.Step(u"Setting Compose Mode"_s, [this] { Message().Compose(); });
    steps.Step(u"Assigning Message Note Text"_s, [this] {
        Message().SetNoteText(MessageText);
        Message().SetSubject(Subject);
    });
    for (const MailRecipient& each : Recipients) {
        steps.Step(u"Assigning Message Note Text"_s, [&] { Message().AddRecipient(each); });
    }
    const bool direct = !Recipients.empty() && SendWithoutDialog;
    const auto send = [&](MailDialog dialog) {
        return steps.Step(u"Sending"_s, [&] {
            hide();
            Message().Send(dialog);
        });
    };
    if (!direct || !send(MailDialog::Skip)) {
        send(MailDialog::Show);
    }
    Recipients.clear();
    Subject.clear();
    MessageText.clear();
    done(Accepted);
}

void WindowMailWindows::Compose(const MailDraft& draft, const QString& obstacle, const SendDraft& send) {
    services_.eventLoop.SetPointer(Pointer::Default);
    frmCompose(services_, draft, obstacle, send, QApplication::activeWindow()).exec();
}

std::optional<PasswordAnswer> WindowMailWindows::AskPassword(const mail::SmtpServer& server, bool refused) {
    services_.eventLoop.SetPointer(Pointer::Default);
    frmPassword window(server, refused, QApplication::activeWindow());
    return window.exec() == QDialog::Accepted ? std::optional(window.Result()) : std::nullopt;
}

void WindowMail::SendText(const QString& text) {
    const Services& services = CurrentProgram().services();
    WindowMailWindows windows(services);
    SmtpMailSession session(services, &windows);
    frmMailText window(services, session, QApplication::activeWindow());
    window.MessageText = text;
    window.ShowModal();
}

} // namespace velmora
