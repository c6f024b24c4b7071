#include "print/PrintJob.h"

#include "base/Steps.h"
#include "print/HtmlWriter.h"
#include "print/NullWriter.h"
#include "print/PrintOptions.h"
#include "print/TextWriter.h"

#include <cmath>

namespace velmora::print {

namespace {

qint16 TabStop(double position) {
    return static_cast<qint16>(std::lrint(position));
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
    const qint16 fifth = TabStop(writer_->DeviceWidth() * 0.2);
    state_.TabStop1 = fifth;
    state_.TabStop2 = static_cast<qint16>(2 * fifth);
    state_.TabStop3 = static_cast<qint16>(3 * fifth);
    state_.TabStop4 = static_cast<qint16>(4 * fifth);
}

void PrintJob::SetTabStops(double f1, double f2, double f3, double f4) {
    const int width = writer_->DeviceWidth();
    state_.TabStop1 = TabStop(width * f1);
    state_.TabStop2 = TabStop(width * f2);
    state_.TabStop3 = TabStop(width * f3);
    state_.TabStop4 = TabStop(width * f4);
}

} // namespace velmora::print
