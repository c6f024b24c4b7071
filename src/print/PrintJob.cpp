#include "print/PrintJob.h"

#include "base/Steps.h"
#include "print/PrintOptions.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace velmora::print {

namespace {

int TabStop(double position) {
    return static_cast<int>(std::lrint(position));
}

} // namespace

PrintJob::PrintJob(PrintServices services)
    : services_(std::move(services)), writer_(std::make_unique<ReportWriter>()) {}

void PrintJob::SetOutputTarget(qint16 target) {
    const bool known = target >= 1 && target <= 4;
    choice_.OutputTarget = known ? static_cast<Target>(target) : Target::Printer;
    choice_.PreviewMode = choice_.OutputTarget == Target::Preview;
    choice_.SuppressPageBreaks = choice_.OutputTarget == Target::Mail;
}

void PrintJob::BeginReport(std::optional<bool> suppressPageBreaks) {
    AbandonReport();
    state_ = JobState();
    static_cast<TargetChoice&>(state_) = choice_;
    writer_ = MakeWriter(services_, state_);
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
    writer_ = std::make_unique<ReportWriter>();
}

void PrintJob::ResetTabStops() {
    const int fifth = TabStop(writer_->DeviceWidth() * 0.2);
    state_.TabStops = {fifth, 2 * fifth, 3 * fifth, 4 * fifth};
}

void PrintJob::SetTabStops(std::span<const double> fractions) {
    const int width = writer_->DeviceWidth();
    std::vector<int> positions;
    std::transform(fractions.begin(), fractions.end(), std::back_inserter(positions),
                   [width](double fraction) { return TabStop(width * fraction); });
    PlaceTabStops(positions);
}

void PrintJob::PlaceTabStops(std::span<const int> positions) {
    state_.TabStops.resize(std::max(state_.TabStops.size(), positions.size()));
    std::copy(positions.begin(), positions.end(), state_.TabStops.begin());
}

} // namespace velmora::print
