#include "reports/ReportFrame.h"

#include "base/Translate.h"
#include "reports/PrinterChoice.h"

#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

ReportFrame::~ReportFrame() {
    if (!running_) {
        return;
    }
    try {
        context_.job.AbandonReport();
        ReturnToIdle();
    } catch (...) { // NOLINT(bugprone-empty-catch)
        // The program is being left already; the window shows nothing any more.
    }
}

bool ReportFrame::Start() {
    if (!Admit()) {
        return false;
    }
    ShowRunning();
    return true;
}

bool ReportFrame::Admit() {
    const Services& services = context_.program.services();
    if (context_.run.ReportRunning) {
        services.dialogs.ShowMessage({Translate(u"Already Printing, wait or cancel exisitng report"_s),
                                      context_.program.Title(), Buttons::Ok, Icon::None});
        return false;
    }
    running_ = true;
    return true;
}

void ReportFrame::ShowRunning() {
    context_.run.ReportRunning = true;
    context_.view.SetCloseCaption(Translate(u"Cancel Report"_s));
    context_.program.services().eventLoop.SetPointer(Pointer::Hourglass);
    ShowReportProgress(context_.view, Translate(u"Preparing Report"_s), 0);
}

void ReportFrame::SetOrientation() {
    const Orientation orientation = context_.delivery.orientation.value_or(Orientation::Portrait);
    steps_.Step({}, [&] { context_.program.services().printers.SetOrientation(orientation); });
}

void ReportFrame::PreparePrinter() {
    context_.job.Restore(target_);
    const Delivery& delivery = context_.delivery;
    if (delivery.continuous) {
        steps_.Step({}, [this] { context_.job.BeginReport(true); });
        return;
    }
    Printers& printers = context_.program.services().printers;
    context_.run.SelectedPrinterName = delivery.printer;
    steps_.Step({}, [&] { SelectPrinter(printers, delivery.printer); });
    steps_.Step({}, [&] { printers.SetFontName(delivery.font); });
    SetOrientation();
    steps_.Step({}, [this] { context_.job.BeginReport(); });
}

bool ReportFrame::BeforeRow(const engine::Recordset& rows) {
    ShowReportProgress(context_.view, Translate(u"Preparing Report"_s),
                       static_cast<qint16>(std::lrint(rows.PercentPosition())));
    context_.program.services().eventLoop.ProcessPendingEvents();
    return !context_.run.CancelRequested;
}

void ReportFrame::ShowSending() {
    ShowReportProgress(context_.view, Translate(u"Sending Report"_s), 0);
}

void ReportFrame::End() {
    context_.job.EndReport();
    ReturnToIdle();
}

void ReportFrame::ReturnToIdle() {
    running_ = false;
    context_.run.ReportRunning = false;
    // A request that came too late must not stop the next report.
    context_.run.CancelRequested = false;
    context_.view.SetCloseCaption(Translate(u"Close"_s));
    ShowReportProgress(context_.view, {}, 0);
    context_.program.services().eventLoop.SetPointer(Pointer::Default);
}

} // namespace velmora
