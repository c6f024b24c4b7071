#include "print/DialogDelivery.h"

#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/NativePath.h"

namespace velmora::print {

void DialogDelivery::SendMail(const QByteArray& text) {
    services_.mail.SendText(QString::fromUtf8(text));
}

void DialogDelivery::SaveFile(const QByteArray& text, ReportFileKind kind) {
    SaveReportFile(text, kind == ReportFileKind::Html ? QStringLiteral("HTML File (*.htm)|*.htm")
                                                      : QStringLiteral("Text file (*.txt)|*.txt"));
}

void DialogDelivery::SaveReportFile(const QByteArray& text, const QString& filter) {
    services_.eventLoop.SetPointer(Pointer::Default);
    const auto answer =
        services_.dialogs.AskSaveFile({Translate(QStringLiteral("Save File As")), filter, NativePath(DataDirectory())});
    // A file without a name would be one named by its extension alone.
    if (!answer || answer->name.isEmpty()) {
        return;
    }
    const BusyPointer busy(services_.eventLoop);
    WriteReportFile(NativePath(ReportFilePath(answer->folder, answer->name, filter)), text);
}

} // namespace velmora::print
