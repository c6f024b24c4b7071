#include "runner/RunRequest.h"

#include "base/Error.h"
#include "layouts/LayoutRunner.h"
#include "ops/SmtpMail.h"
#include "platform/mail/OutgoingMail.h"
#include "platform/printers/CupsQueues.h"
#include "platform/printers/PrintQueues.h"
#include "print/PrintStyles.h"
#include "print/ReportFile.h"
#include "print/pages/PageWriters.h"
#include "reports/PrintReport.h"

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

// Delivers into a file, or to standard output, the bytes that a desk would save; mail goes to its recipients at once,
// under the report's title.
class OutputDelivery : public print::DocumentSink {
public:
    // Both outlive it.
    OutputDelivery(const Services& services, const Delivery& delivery) : services_(services), delivery_(delivery) {}

    void SendMail(const QByteArray& bytes) override {
        const QString text = QString::fromUtf8(bytes);
        SmtpMailSession session(services_);
        session.SignOn();
        session.SendNow({mail::RecipientList(delivery_.recipients), TitleOf(text), text}, [] { return true; });
        delivered_ = true;
    }
    bool SaveFile(const QByteArray& bytes, print::ReportFileKind kind) override {
        if (delivery_.file == u"-") {
            WriteToStandardOutput(bytes, kind);
        } else {
            print::WriteReportFile(delivery_.file, bytes, kind);
        }
        delivered_ = true;
        return true;
    }

    bool HasDelivered() const { return delivered_; }

private:
    const Services& services_;
    const Delivery& delivery_;
    bool delivered_ = false;
};

class NoView : public ReportView {
public:
    void SetCloseCaption(const QString&) override {}
    void ShowProgress(const QString&, int) override {}
    void HideProgress() override {}
};

std::unique_ptr<printers::PrintQueues> MakeQueues(const Delivery& delivery) {
    if (delivery.ToPages() && (delivery.target == DeliveryTarget::Printer || !delivery.printer.isEmpty())) {
        return std::make_unique<printers::CupsQueues>();
    }
    return std::make_unique<printers::NoQueues>();
}

} // namespace

ReportPrinters::ReportPrinters(const Delivery& delivery, const QLocale& locale)
    : SystemPrinters(MakeQueues(delivery), locale), toPdf_(delivery.target == DeliveryTarget::PdfFile) {}

void ReportPrinters::Choose(const Delivery& delivery) {
    if (!delivery.ToPages()) {
        return;
    }
    const QString& name = delivery.printer;
    if (!name.isEmpty()) {
        SelectDevice(name);
    }
    if (delivery.target == DeliveryTarget::Printer && PrintsToFile()) {
        QStringList queues = DeviceNames();
        queues.removeAll(printers::PdfFileDevice());
        throw ProgramError(ErrorNumber::Unavailable,
                           queues.isEmpty()
                               ? u"No printer is installed; the report can be printed into a PDF file."_s
                               : u"No printer is the default one; choose one of these: %1"_s.arg(queues.join(u", "_s)));
    }
}

void ReportPrinters::Print(const QString& deviceName, const printers::QueueJob& job) {
    SystemPrinters::Print(deviceName, job);
    printed_ = true;
}

void RunRequest(ReportContext& context, const print::PrintServices& services, const ReportRequest& request) {
    const Delivery& delivery = context.delivery;
    const auto target = delivery.ToPages() ? print::Target::Printer : static_cast<print::Target>(delivery.target);
    if (const auto* layout = std::get_if<LayoutRequest>(&request)) {
        const auto runLayout = [&](const QString& path, const QString& formula) {
            layouts::RunLayout(services, context.database, {target, delivery.orientation}, path, formula);
        };
        layouts::RunCrystalReport(context.program, *layout, context.run, context.database, runLayout);
        return;
    }
    context.job.SetOutputTarget(static_cast<qint16>(target));
    PrintReport(context, request);
}

bool RunUnattended(const Program& program, engine::Database& database, ReportPrinters& printers,
                   const Delivery& delivery, const ReportRequest& request) {
    OutputDelivery files(program.services(), delivery);
    print::PageOutput output(printers, printers, files);
    print::PageWriters pages(printers, output, program.Title());
    const print::PrintServices services{program.services(), files, [&] { return print::ReadPrintAttributes(database); },
                                        &pages};
    print::PrintJob job(services);
    NoView view;
    ReportRun run;
    ReportContext context{program, run, delivery, view, database, job};
    RunRequest(context, services, request);
    return files.HasDelivered() || printers.HasPrinted();
}

} // namespace velmora::runner
