#include "runner/OutputDelivery.h"

#include "base/Error.h"
#include "print/ReportFile.h"

#include <QFile>

#include <unistd.h>

namespace velmora::runner {

using namespace Qt::StringLiterals;

namespace {

void WriteToStandardOutput(const QByteArray& bytes, print::ReportFileKind kind) {
    QFile out;
    const bool written =
        out.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered) && print::WriteReport(out, bytes, kind);
    if (!written) {
        throw ProgramError(out.error() == QFileDevice::ResourceError ? ErrorNumber::DiskFull : ErrorNumber::FileAccess,
                           u"The report could not be written to standard output: %1"_s.arg(out.errorString()));
    }
}

// The first line of the report that is not a rule: its title, with the subtitle behind it.
QString TitleOf(const QString& text) {
    for (const QString& line : text.split(u'\n')) {
        const QString title = line.simplified();
        if (!title.isEmpty() && title.count(u'-') != title.size()) {
            return title;
        }
    }
    return {};
}

} // namespace

void OutputDelivery::SendMail(const QByteArray& bytes) {
    const QString text = QString::fromUtf8(bytes);
    session_.SignOn();
    const auto message = session_.NewMessage();
    message->Compose();
    message->SetNoteText(text);
    message->SetSubject(TitleOf(text));
    for (const MailRecipient& each : recipients_) {
        message->AddRecipient(each);
    }
    message->Send(MailDialog::Skip);
    delivered_ = true;
}

bool OutputDelivery::SaveFile(const QByteArray& bytes, print::ReportFileKind kind) {
    if (output_ == u"-") {
        WriteToStandardOutput(bytes, kind);
    } else {
        print::WriteReportFile(output_, bytes, kind);
    }
    delivered_ = true;
    return true;
}

} // namespace velmora::runner
