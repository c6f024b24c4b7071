#include "layouts/LayoutRunner.h"

#include "data/NativePath.h"
#include "layouts/LayoutWalk.h"
#include "layouts/file/LayoutFile.h"

namespace velmora::layouts {

void LayoutRunner::Run() {
    const Layout layout = ReadLayoutFile(NativePath(path_), database_.Schema());
    const Formula selection = ParseFormula(formula_, layout.scope);
    print::JobState state;
    state.OutputTarget = target_;
    state.PreviewMode = target_ == print::Target::Preview;
    state.pageForm = layout.pages;
    state.pageForm->orientation = orientation_.value_or(layout.pages.orientation);
    const auto writer = print::MakeWriter(services_, state);
    writer->Begin();
    WriteRecords(layout, selection, database_, services_.program.localeText, services_.program.clock.Now(), *writer);
    writer->Finish();
    writer->Deliver();
}

} // namespace velmora::layouts
