#include "app/report/OutputDelivery.h"

#include "base/Error.h"
#include "print/ReportFile.h"

#include <QFile>

#include <unistd.h>

namespace velmora::report {

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

} // namespace

void OutputDelivery::SendMail(const QByteArray&) {
    throw ProgramError(ErrorNumber::Unavailable, u"This program does not send mail"_s);
}

void OutputDelivery::SaveFile(const QByteArray& bytes, print::ReportFileKind kind) {
    if (output_ == u"-") {
        WriteToStandardOutput(bytes, kind);
    } else {
        print::WriteReportFile(output_, bytes, kind);
    }
    delivered_ = true;
}

} // namespace velmora::report
