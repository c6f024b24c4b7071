#pragma once

#include "base/Program.h"
#include "platform/pages/Page.h"
#include "print/PrintServices.h"

namespace velmora::print {

// A report as it is handed to the preview.
struct PreviewReport {
    pages::Document document;
    // What the reader must know of it, such as the page limit that it met; empty without.
    QString notice;
    // How the paper is held that it is printed on; as the printer is set without.
    std::optional<Orientation> orientation = {};
};

// Shows finished reports, each in a window of its own, which then belongs to the person at the desk.
class PreviewWindows {
public:
    virtual ~PreviewWindows() = default;
    virtual void Open(PreviewReport report) = 0;
};

// Makes the writers of previews, and leaves reports for the printer to another factory. A preview has at most 255
// pages, of the current printer's paper and font. All of it outlives the object and the writers.
class PreviewPages : public PageWriterFactory {
public:
    // Documents are called by the report's title behind `documentName`.
    PreviewPages(const Services& services, PreviewWindows& windows, PageWriterFactory& printer, QString documentName)
        : services_(services), windows_(windows), printer_(printer), documentName_(std::move(documentName)) {}

    // The preview's first attempt to go beyond the page limit is told in a message box, each further one in the status
    // line alone: a report may make one with every row. The pages stay, and what follows is drawn on the last of them.
    std::unique_ptr<ReportWriter> MakeWriter(JobState& state) override;

private:
    const Services& services_;
    PreviewWindows& windows_;
    PageWriterFactory& printer_;
    QString documentName_;
};

} // namespace velmora::print
