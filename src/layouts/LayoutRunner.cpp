#include "layouts/LayoutRunner.h"

#include "data/NativePath.h"
#include "layouts/LayoutWalk.h"
#include "layouts/file/LayoutFile.h"

namespace velmora::layouts {

void LayoutRunner::Run() {
    const Layout layout = ReadLayoutFile(NativePath(path_), database_.Schema());
    const Formula selection = ParseFormula(formula_, layout.scope);
    const DateTime now = services_.clock.Now();
    output_.Deliver(layout, [&](DocumentWriter& writer) {
        WriteRecords(layout, selection, database_, services_.localeText, now, writer);
    });
}

} // namespace velmora::layouts
