#include "print/ReportFile.h"

#include "base/Error.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/Helpers.h"
#include "data/NativePath.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace velmora::print {

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

[[noreturn]] void ThrowUnwritten(const QString& path, const QFileDevice& file) {
    if (file.error() == QFileDevice::ResourceError) {
        throw ProgramError(ErrorNumber::DiskFull,
                           QStringLiteral("The report could not be saved as %1: the disk is full. Free some space, or "
                                          "save the report in another folder.")
                               .arg(path));
    }
    throw ProgramError(ErrorNumber::FileAccess,
                       QStringLiteral("The report could not be saved as %1: %2").arg(path, file.errorString()));
}

// A device takes a part of what does not fit; only the attempt to write the rest tells why.
bool WriteAll(QIODevice& device, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 written = device.write(bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes = bytes.sliced(written);
    }
    return true;
}

// A pipe or a device is written to; replacing it by a file would destroy it.
void WriteInPlace(const QString& path, const QByteArray& bytes, ReportFileKind kind) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !WriteReport(file, bytes, kind)) {
        ThrowUnwritten(path, file);
    }
}

} // namespace

void DialogDelivery::SendMail(const QByteArray& text) {
    services_.mail.SendText(QString::fromUtf8(text));
}

bool DialogDelivery::SaveFile(const QByteArray& bytes, ReportFileKind kind) {
    services_.eventLoop.SetPointer(Pointer::Default);
    const auto path = AskReportPath(services_.dialogs, kind);
    if (!path) {
        return false;
    }
    const BusyPointer busy(services_.eventLoop);
    WriteReportFile(*path, bytes, kind);
    return true;
}

std::optional<QString> AskReportPath(Dialogs& dialogs, ReportFileKind kind) {
    const QString filter = FilterOf(kind);
    const auto answer =
        dialogs.AskSaveFile({Translate(QStringLiteral("Save File As")), filter, NativePath(DataDirectory())});
    // A file without a name would be one named by its extension alone.
    if (!answer || answer->name.isEmpty()) {
        return std::nullopt;
    }
    const QString path = AddBackslash(answer->folder) + answer->name;
    const QString extension = filter.right(4);
    return NativePath(path.endsWith(extension) ? path : path + extension);
}

bool WriteReport(QIODevice& device, const QByteArray& bytes, ReportFileKind kind) {
    const bool endsLine = kind != ReportFileKind::Pdf && !bytes.isEmpty();
    return WriteAll(device, bytes) && (!endsLine || WriteAll(device, "\r\n"));
}

void WriteReportFile(const QString& path, const QByteArray& bytes, ReportFileKind kind) {
    const QFileInfo known(path);
    if (!known.dir().exists()) {
        throw ProgramError(
            ErrorNumber::PathNotFound,
            QStringLiteral("The report could not be saved as %1: there is no folder %2").arg(path, known.dir().path()));
    }
    if (known.exists() && !known.isFile() && !known.isDir()) {
        WriteInPlace(path, bytes, kind);
        return;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        ThrowUnwritten(path, file);
    }
    // Without a commit the file goes away again, so the reason is still the file's own.
    if (!WriteReport(file, bytes, kind) || !file.commit()) {
        ThrowUnwritten(path, file);
    }
}

} // namespace velmora::print
