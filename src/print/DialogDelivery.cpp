#include "print/DialogDelivery.h"

#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/NativePath.h"

namespace velmora::print {

void DialogDelivery::SendMail(const QByteArray& text) {
    services_.mail.SendText(QString::fromUtf8(text));
}

namespace {

QString FilterOf(ReportFileKind kind) {
    switch (kind) {
    case ReportFileKind::Html:
        return QStringLiteral("HTML File (*.htm)|*.htm");
    case ReportFileKind::Pdf:
        return QStringLiteral("PDF file (*.pdf)|*.pdf");
    case ReportFileKind::PlainText:
        break;
    }
    return QStringLiteral("Text file (*.txt)|*.txt");
}

} // namespace

bool DialogDelivery::SaveFile(const QByteArray& bytes, ReportFileKind kind) {
    const QString filter = FilterOf(kind);
    services_.eventLoop.SetPointer(Pointer::Default);
    const auto answer =
        services_.dialogs.AskSaveFile({Translate(QStringLiteral("Save File As")), filter, NativePath(DataDirectory())});
    // A file without a name would be one named by its extension alone.
    if (!answer || answer->name.isEmpty()) {
        return false;
    }
    const BusyPointer busy(services_.eventLoop);
    WriteReportFile(NativePath(ReportFilePath(answer->folder, answer->name, filter)), bytes, kind);
    return true;
}

} // namespace velmora::print
