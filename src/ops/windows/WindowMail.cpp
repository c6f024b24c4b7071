#include "ops/windows/WindowMail.h"

#include "ops/windows/frmCompose.h"
#include "ops/windows/frmMailText.h"
#include "ops/windows/frmPassword.h"

#include <QApplication>

namespace velmora {

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
