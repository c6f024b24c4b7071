#pragma once

#include "base/Program.h"
#include "print/JobState.h"
#include "print/ReportFile.h"
#include "print/ReportWriter.h"

#include <memory>

namespace velmora::print {

// Makes the writers of the targets that draw pages.
class PageWriterFactory {
public:
    virtual ~PageWriterFactory() = default;
    // Draws on preview pages when `state.PreviewMode` is set, else on the current printer. `state` outlives the writer.
    virtual std::unique_ptr<ReportWriter> MakeWriter(JobState& state) = 0;
};

// What documents are written and delivered with. All of it outlives who works with it.
struct PrintServices {
    const Services& program;
    DocumentSink& sink;
    AttributeSource attributes;
    // Null in a program that draws no pages.
    PageWriterFactory* pages = nullptr;
};

// The writer of the target that `state` names. Throws Error when the target is one that this program does not have.
std::unique_ptr<ReportWriter> MakeWriter(const PrintServices& services, JobState& state);

} // namespace velmora::print
