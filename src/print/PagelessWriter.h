#pragma once

#include "print/DocumentSink.h"
#include "print/JobState.h"
#include "print/ReportWriter.h"

namespace velmora::print {

// A writer whose target has no pages: it accumulates ReportText, and whatever concerns pages alone does nothing.
class PagelessWriter : public ReportWriter {
public:
    // `width` is the printer's page width, which serves only as the measure of the tab stops. All of it outlives the
    // writer.
    PagelessWriter(JobState& state, int width, DocumentSink& sink) : state_(state), width_(width), sink_(sink) {}

    int DeviceWidth() const override { return width_; }
    void Deliver() override {
        if (state_.OutputTarget == Target::Mail) {
            sink_.SendMail(ReportText());
        } else {
            const bool html = state_.OutputTarget == Target::HtmlFile;
            sink_.SaveFile(ReportText(), html ? ReportFileKind::Html : ReportFileKind::PlainText);
        }
    }

protected:
    QByteArray& ReportText() { return state_.ReportText; }

private:
    JobState& state_;
    int width_;
    DocumentSink& sink_;
};

} // namespace velmora::print
