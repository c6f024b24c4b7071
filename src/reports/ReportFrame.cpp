#include "reports/ReportFrame.h"

#include "base/Translate.h"

#include <algorithm>
#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

void ShowReportProgress(ReportView& view, const QString& text, qint16 percent) {
    if (text.isEmpty()) {
        view.HideProgress();
    } else {
        view.ShowProgress(text, std::min<int>(percent, 100));
    }
}

void SelectPrinter(Printers& printers, const QString& deviceName) {
    if (!deviceName.isEmpty() && printers.DeviceNames().contains(deviceName)) {
        printers.SelectDevice(deviceName);
    }
}

ReportFrame::ReportFrame(ReportContext& context, const QString& procedure)
    : context_(context), steps_(context.program.services().errors, u"Service Administration"_s, procedure, QString()),
      target_(context.job.Choice()) {}

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
    Step([&] { context_.program.services().printers.SetOrientation(orientation); });
}

void ReportFrame::PreparePrinter() {
    context_.job.Restore(target_);
    const Delivery& delivery = context_.delivery;
    if (delivery.continuous) {
        Step([this] { context_.job.BeginReport(true); });
        return;
    }
    Printers& printers = context_.program.services().printers;
    context_.run.SelectedPrinterName = delivery.printer;
    Step([&] { SelectPrinter(printers, delivery.printer); });
    Step([&] { printers.SetFontName(delivery.font); });
    SetOrientation();
    Step([this] { context_.job.BeginReport(); });
}

QString ReportFrame::PrintedAt(const QString& caption, const std::optional<ReportDays>& days) const {
    const Services& services = context_.program.services();
    return Translate(caption) + u' ' + services.localeText.GeneralDate(services.clock.Now()) +
           (days ? days->phrase : QString());
}

Gathering ReportFrame::Gather() {
    return {context_.database, [this](const auto& reading) { return Step(reading); },
            [this](double percent) {
                ShowReportProgress(context_.view, Translate(u"Preparing Report"_s),
                                   static_cast<qint16>(std::lrint(percent)));
                context_.program.services().eventLoop.ProcessPendingEvents();
                return !context_.run.CancelRequested;
            }};
}

void ReportFrame::ShowSending(const GatheredRecords& records) {
    if (!records.cancelled) {
        ShowReportProgress(context_.view, Translate(u"Sending Report"_s), 0);
    }
}

void ReportFrame::End(const GatheredRecords& records, const QString& notice) {
    if (records.cancelled) {
        const QLocale& locale = context_.program.services().localeText.Locale();
        context_.job.PrintParagraph(
            Translate(notice).arg(locale.toString(records.recordsRead), locale.toString(records.recordCount)));
    }
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
