#include "print/PrintJob.h"

#include "base/Steps.h"
#include "print/HtmlWriter.h"
#include "print/NullWriter.h"
#include "print/PrintOptions.h"
#include "print/TextWriter.h"

#include <algorithm>
#include <cmath>

namespace velmora::print {

namespace {

int TabStop(double position) {
    return static_cast<int>(std::lrint(position));
}

} // namespace

PrintJob::PrintJob(PrintServices services) : services_(std::move(services)), writer_(std::make_unique<NullWriter>()) {}

void PrintJob::SetOutputTarget(qint16 target) {
    const bool known = target >= 1 && target <= 4;
    choice_.OutputTarget = known ? static_cast<Target>(target) : Target::Printer;
    choice_.PreviewMode = choice_.OutputTarget == Target::Preview;
    choice_.SuppressPageBreaks = choice_.OutputTarget == Target::Mail;
}

std::unique_ptr<ReportWriter> PrintJob::MakeWriter() {
    const int width = services_.program.printers.PageWidth();
    Delivery& delivery = services_.delivery;
    switch (state_.OutputTarget) {
    case Target::Mail:
        return std::make_unique<TextWriter>(state_, width, [&](const QByteArray& text) { delivery.SendMail(text); });
    case Target::TextFile:
        return std::make_unique<TextWriter>(
            state_, width, [&](const QByteArray& text) { delivery.SaveFile(text, ReportFileKind::PlainText); });
    case Target::HtmlFile:
        return std::make_unique<HtmlWriter>(
            state_, width, [&](const QByteArray& text) { delivery.SaveFile(text, ReportFileKind::Html); });
    case Target::Printer:
    case Target::Preview:
        break;
    }
    if (services_.pages == nullptr) {
        throw ProgramError(ErrorNumber::Unavailable,
                           QStringLiteral("This program cannot draw pages for the printer or the preview. Choose a "
                                          "text file, an HTML file or mail."));
    }
    return services_.pages->MakeWriter(state_);
}

void PrintJob::BeginReport(std::optional<bool> suppressPageBreaks) {
    AbandonReport();
    state_ = JobState();
    static_cast<TargetChoice&>(state_) = choice_;
    writer_ = MakeWriter();
    try {
        LoadPrintAttributes();
        ResetTabStops();
        writer_->Begin();
        state_.SuppressPageBreaks = suppressPageBreaks.value_or(state_.OutputTarget == Target::Preview);
        state_.LeaderStyle = LoadLeaderStyle(services_.program.userSettings);
    } catch (...) {
        AbandonReport();
        throw;
    }
}

void PrintJob::EndReport() {
    Steps steps(services_.program.errors, QStringLiteral("Printing"), QStringLiteral("End Job"),
                QStringLiteral("Undefined"));
    steps.Step({}, [this] { writer_->Finish(); });
    steps.Step({}, [this] { writer_->Deliver(); });
    AbandonReport();
}

void PrintJob::AbandonReport() {
    writer_ = std::make_unique<NullWriter>();
}

void PrintJob::ResetTabStops() {
    const int fifth = TabStop(writer_->DeviceWidth() * 0.2);
    state_.TabStops = {fifth, 2 * fifth, 3 * fifth, 4 * fifth};
}

void PrintJob::SetTabStops(std::span<const double> fractions) {
    state_.TabStops.resize(std::max(state_.TabStops.size(), fractions.size()));
    const int width = writer_->DeviceWidth();
    std::transform(fractions.begin(), fractions.end(), state_.TabStops.begin(),
                   [width](double fraction) { return TabStop(width * fraction); });
}

} // namespace velmora::print
