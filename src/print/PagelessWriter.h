#pragma once

#include "print/JobState.h"
#include "print/ReportWriter.h"

#include <functional>

namespace velmora::print {

// Takes the finished text of a report, UTF-8.
using DeliverText = std::function<void(const QByteArray& text)>;

// A writer whose target has no pages: it accumulates ReportText, and whatever concerns pages alone does nothing.
class PagelessWriter : public ReportWriter {
public:
    // `width` is the printer's page width, which serves only as the measure of the tab stops.
    PagelessWriter(JobState& state, int width, DeliverText deliver)
        : text_(state.ReportText), width_(width), deliver_(std::move(deliver)) {}

    int DeviceWidth() const override { return width_; }
    int TextWidth(Text) const override { return 0; }
    void Deliver() override { deliver_(text_); }
    void NewPage() override {}
    void EnsureRoom(qint16) override {}
    void AddVerticalSpace(qint16) override {}

protected:
    QByteArray& ReportText() { return text_; }

private:
    QByteArray& text_;
    int width_;
    DeliverText deliver_;
};

} // namespace velmora::print
