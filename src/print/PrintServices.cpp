#include "print/PrintServices.h"

#include "print/TextWriter.h"

namespace velmora::print {

std::unique_ptr<ReportWriter> MakeWriter(const PrintServices& services, JobState& state) {
    const int width = services.program.printers.PageWidth();
    switch (state.OutputTarget) {
    case Target::Mail:
    case Target::TextFile:
        return std::make_unique<TextWriter>(state, width, services.sink);
    case Target::HtmlFile:
        return MakeHtmlWriter(state, width, services.sink);
    case Target::Printer:
    case Target::Preview:
        break;
    }
    if (services.pages == nullptr) {
        throw ProgramError(ErrorNumber::Unavailable,
                           QStringLiteral("This program cannot draw pages for the printer or the preview. Choose a "
                                          "text file, an HTML file or mail."));
    }
    return services.pages->MakeWriter(state);
}

} // namespace velmora::print
