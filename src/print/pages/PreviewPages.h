#pragma once

#include "base/Program.h"
#include "print/pages/PageWriter.h"

namespace velmora::print {

// A report as it is handed to the preview.
struct PreviewReport {
    pages::Document document;
    // What the reader must know of it, such as the page limit that it met; empty without.
    QString notice;
};

// Shows finished reports, each in a window of its own, which then belongs to the person at the desk.
class PreviewWindows {
public:
    virtual ~PreviewWindows() = default;
    virtual void Open(PreviewReport report) = 0;
};

// The preview's part of the page writers: at most 255 pages of the current printer's size. Both objects outlive the
// writers.
class PreviewPages {
public:
    PreviewPages(const Services& services, PreviewWindows& windows) : services_(services), windows_(windows) {}

    // The first attempt to go beyond the page limit is told in a message box, each further one in the status line
    // alone: a report may make one with every row. The pages stay, and what follows is drawn on the last of them.
    std::unique_ptr<ReportWriter> MakeWriter(JobState& state, const PageGeometry& paper, const pages::FontSpec& font,
                                             const QString& documentName) const;

private:
    const Services& services_;
    PreviewWindows& windows_;
};

} // namespace velmora::print
