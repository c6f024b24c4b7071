#include "runner/RunUnattended.h"

#include "ops/SmtpMail.h"
#include "print/PrintStyles.h"
#include "print/pages/PageWriters.h"
#include "runner/OutputDelivery.h"
#include "runner/RunRequest.h"

namespace velmora::runner {

namespace {

class NoView : public ReportView {
public:
    void SetCloseCaption(const QString&) override {}
    void ShowProgress(const QString&, int) override {}
    void HideProgress() override {}
};

} // namespace

bool RunUnattended(const Program& program, engine::Database& database, ReportPrinters& printers,
                   const Delivery& delivery, const ReportRequest& request) {
    SmtpMailSession session(program.services());
    OutputDelivery files(delivery.file, session, delivery.recipients);
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
