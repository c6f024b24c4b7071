#include "platform/ConsoleServices.h"

#include <thread>

namespace velmora {

Answer ConsoleDialogs::ShowMessage(const Message& message) {
    QString text = message.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    const QByteArray line = (message.title.isEmpty() ? text : message.title + QStringLiteral(": ") + text).toUtf8();
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), out_);
    std::fputc('\n', out_);
    switch (message.buttons) {
    case Buttons::Ok:
        return Answer::Ok;
    case Buttons::AbortRetryIgnore:
        return Answer::Abort;
    case Buttons::YesNo:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

void ConsoleMail::SendText(const QString&) {
    throw ProgramError(ErrorNumber::Unavailable, QStringLiteral("This program has no mail service"));
}

void ConsoleEventLoop::Wait(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}

} // namespace velmora
